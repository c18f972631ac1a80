<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AccountsElement</name>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Ordinary</source>
        <translation>Gewöhnliche</translation>
    </message>
</context>
<context>
    <name>BrowserGuard</name>
    <message>
        <source>No browser is started with administrator rights. The address is %1</source>
        <translation>Mit Verwaltungsrechten wird kein Browser gestartet. Die Adresse lautet %1</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>%1: no window can be opened: %2</source>
        <translation>%1: Es kann kein Fenster geöffnet werden: %2</translation>
    </message>
    <message>
        <source>Administration of this computer.</source>
        <translation>Verwaltung dieses Rechners.</translation>
    </message>
    <message>
        <source>Load the plug-ins of another folder too.</source>
        <translation>Auch die Erweiterungen eines weiteren Ordners laden.</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Unexpected argument: %1</source>
        <translation>Unerwartetes Argument: %1</translation>
    </message>
</context>
<context>
    <name>ComputerData</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation>Kernel</translation>
    </message>
    <message>
        <source>Architecture</source>
        <translation>Architektur</translation>
    </message>
    <message>
        <source>Processors</source>
        <translation>Prozessoren</translation>
    </message>
    <message>
        <source>Running since</source>
        <translation>Läuft seit</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Arbeitsspeicher</translation>
    </message>
    <message>
        <source>The console runs as</source>
        <translation>Die Konsole läuft als</translation>
    </message>
    <message>
        <source>%1 × %2</source>
        <translation>%1 × %2</translation>
    </message>
    <message>
        <source>%1, of which %2 are available</source>
        <translation>%1, davon %2 verfügbar</translation>
    </message>
    <message>
        <source>%1, with administrator rights</source>
        <translation>%1, mit Verwaltungsrechten</translation>
    </message>
    <message>
        <source>%1, without administrator rights</source>
        <translation>%1, ohne Verwaltungsrechte</translation>
    </message>
</context>
<context>
    <name>ElementMenu</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Neu einlesen</translation>
    </message>
    <message>
        <source>&amp;Copy name</source>
        <translation>Namen &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Anzeigen</translation>
    </message>
</context>
<context>
    <name>ListBar</name>
    <message>
        <source>Search this list (Ctrl+Shift+F)</source>
        <translation>Diese Liste durchsuchen (Strg+Umschalt+F)</translation>
    </message>
    <message>
        <source>Shows the rows that contain the text.
Down goes to the list, Escape ends the search.</source>
        <translation>Zeigt die Zeilen, die den Text enthalten.
Pfeil abwärts führt in die Liste, Esc beendet die Suche.</translation>
    </message>
    <message>
        <source>Search this list</source>
        <translation>Diese Liste durchsuchen</translation>
    </message>
    <message>
        <source>Which of them are shown</source>
        <translation>Welche davon gezeigt werden</translation>
    </message>
</context>
<context>
    <name>LocalAccounts</name>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
</context>
<context>
    <name>LocalComputerModule</name>
    <message>
        <source>Read what this computer is</source>
        <translation>Angaben zu diesem Rechner lesen</translation>
    </message>
    <message>
        <source>This computer</source>
        <translation>Dieser Rechner</translation>
    </message>
</context>
<context>
    <name>LocalGroupModule</name>
    <message numerus="yes">
        <source> and %n more</source>
        <translation>
            <numerusform> und %n weiteres</numerusform>
            <numerusform> und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>The groups of this computer</source>
        <translation>Die Gruppen dieses Rechners</translation>
    </message>
    <message>
        <source>Local groups</source>
        <translation>Lokale Gruppen</translation>
    </message>
    <message>
        <source>Groups of this computer</source>
        <translation>Gruppen dieses Rechners</translation>
    </message>
    <message>
        <source>Local group: %1</source>
        <translation>Lokale Gruppe: %1</translation>
    </message>
    <message>
        <source>Read local groups</source>
        <translation>Lokale Gruppen lesen</translation>
    </message>
    <message>
        <source>Read local group %1</source>
        <translation>Lokale Gruppe %1 lesen</translation>
    </message>
    <message>
        <source>There is no group %1 any more</source>
        <translation>Die Gruppe %1 gibt es nicht mehr</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Group id</source>
        <translation>Gruppennummer</translation>
    </message>
    <message>
        <source>Primary members</source>
        <translation>Primäre Mitglieder</translation>
    </message>
    <message>
        <source>Further members</source>
        <translation>Weitere Mitglieder</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>Namen</translation>
    </message>
    <message>
        <source>Primary group of</source>
        <translation>Primäre Gruppe von</translation>
    </message>
</context>
<context>
    <name>LocalUserModule</name>
    <message>
        <source>The users of this computer</source>
        <translation>Die Benutzer dieses Rechners</translation>
    </message>
    <message>
        <source>Local users</source>
        <translation>Lokale Benutzer</translation>
    </message>
    <message>
        <source>Users of this computer</source>
        <translation>Benutzer dieses Rechners</translation>
    </message>
    <message>
        <source>Local user: %1</source>
        <translation>Lokaler Benutzer: %1</translation>
    </message>
    <message>
        <source>Read local users</source>
        <translation>Lokale Benutzer lesen</translation>
    </message>
    <message>
        <source>Read local user %1</source>
        <translation>Lokalen Benutzer %1 lesen</translation>
    </message>
    <message>
        <source>There is no user %1 any more</source>
        <translation>Den Benutzer %1 gibt es nicht mehr</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>User id</source>
        <translation>Benutzernummer</translation>
    </message>
    <message>
        <source>Primary group</source>
        <translation>Primäre Gruppe</translation>
    </message>
    <message>
        <source>Full name</source>
        <translation>Vollständiger Name</translation>
    </message>
    <message>
        <source>Home folder</source>
        <translation>Persönlicher Ordner</translation>
    </message>
    <message>
        <source>Shell</source>
        <translation>Shell</translation>
    </message>
    <message>
        <source>Further groups</source>
        <translation>Weitere Gruppen</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>&amp;Console</source>
        <translation>&amp;Konsole</translation>
    </message>
    <message>
        <source>&amp;Page</source>
        <translation>&amp;Seite</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Tool bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Tasks</source>
        <translation>Aufträge</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>Apply the changes of this page (Ctrl+S)</source>
        <translation>Die Änderungen dieser Seite anwenden (Strg+S)</translation>
    </message>
    <message>
        <source>Re&amp;vert</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Drop the changes of this page and show what is there (Ctrl+R)</source>
        <translation>Die Änderungen dieser Seite verwerfen und den Stand des Rechners zeigen (Strg+R)</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Neu einlesen</translation>
    </message>
    <message>
        <source>Read this page again (F5)</source>
        <translation>Diese Seite neu einlesen (F5)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Plug-ins…</source>
        <translation>E&amp;rweiterungen …</translation>
    </message>
    <message>
        <source>Search the &amp;tree</source>
        <translation>&amp;Baum durchsuchen</translation>
    </message>
    <message>
        <source>Search the &amp;list</source>
        <translation>&amp;Liste durchsuchen</translation>
    </message>
    <message>
        <source>&amp;Next part of the window</source>
        <translation>&amp;Nächster Teil des Fensters</translation>
    </message>
    <message>
        <source>&amp;Previous part of the window</source>
        <translation>&amp;Voriger Teil des Fensters</translation>
    </message>
    <message>
        <source>Always &amp;read lists again when they are shown</source>
        <translation>Listen bei jedem Anzeigen neu ein&amp;lesen</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>About &amp;Qt</source>
        <translation>Über &amp;Qt</translation>
    </message>
    <message>
        <source>The console runs without administrator rights: it shows what can be read, and what needs these rights cannot be done.</source>
        <translation>Die Konsole läuft ohne Verwaltungsrechte: Sie zeigt, was gelesen werden kann; was diese Rechte erfordert, ist nicht möglich.</translation>
    </message>
    <message>
        <source>Not every plug-in is at work.</source>
        <translation>Nicht alle Erweiterungen sind in Betrieb.</translation>
    </message>
    <message>
        <source>Show &amp;why</source>
        <translation>&amp;Gründe zeigen</translation>
    </message>
    <message>
        <source>Tas&amp;ks</source>
        <translation>A&amp;ufträge</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>a page, on a computer</comment>
        <translation>%1 auf %2</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>A console for the administration of this computer.

Copyright 2026 The kra authors. Free software under the GNU General Public License, version 3 or later. It comes with no warranty.</source>
        <translation>Eine Konsole zur Verwaltung dieses Rechners.

Copyright 2026 The kra authors. Freie Software unter der GNU General Public License, Version 3 oder neuer. Es besteht keinerlei Gewährleistung.</translation>
    </message>
    <message>
        <source>Waiting for %1 to finish. The console closes then; close the window once more, and the rest is done without it.</source>
        <translation>Es wird gewartet, bis %1 beendet ist. Danach schließt sich die Konsole; schließen Sie das Fenster noch einmal, so wird der Rest ohne Fenster erledigt.</translation>
    </message>
    <message>
        <source>&amp;Keep it open</source>
        <translation>&amp;Offen lassen</translation>
    </message>
    <message>
        <source>The console stays open, since &quot;%1&quot; failed.</source>
        <translation>Die Konsole bleibt offen, weil „%1“ fehlgeschlagen ist.</translation>
    </message>
    <message>
        <source>H&amp;ide</source>
        <translation>Aus&amp;blenden</translation>
    </message>
</context>
<context>
    <name>NavigationPane</name>
    <message>
        <source>Search the tree (Ctrl+F)</source>
        <translation>Den Baum durchsuchen (Strg+F)</translation>
    </message>
    <message>
        <source>Shows the elements that contain the text.
Down goes to the elements, Escape ends the search.</source>
        <translation>Zeigt die Einträge, die den Text enthalten.
Pfeil abwärts führt zu den Einträgen, Esc beendet die Suche.</translation>
    </message>
    <message>
        <source>Search the tree</source>
        <translation>Den Baum durchsuchen</translation>
    </message>
    <message>
        <source>Tree</source>
        <translation>Baum</translation>
    </message>
</context>
<context>
    <name>PluginsDialog</name>
    <message>
        <source>Plug-ins</source>
        <translation>Erweiterungen</translation>
    </message>
    <message>
        <source>What became of the plug-in</source>
        <translation>Was aus der Erweiterung wurde</translation>
    </message>
    <message>
        <source>No plug-in was found.</source>
        <translation>Es wurde keine Erweiterung gefunden.</translation>
    </message>
    <message>
        <source>Refused: not safe to load</source>
        <translation>Abgelehnt: nicht sicher zu laden</translation>
    </message>
    <message>
        <source>Broken: not a plug-in that loads</source>
        <translation>Defekt: keine ladbare Erweiterung</translation>
    </message>
    <message>
        <source>Made for another program</source>
        <translation>Für ein anderes Programm gemacht</translation>
    </message>
    <message>
        <source>Failed while it was started</source>
        <translation>Beim Starten gescheitert</translation>
    </message>
    <message>
        <source>Cannot work on this computer</source>
        <translation>Kann auf diesem Rechner nicht arbeiten</translation>
    </message>
    <message>
        <source>At work</source>
        <translation>In Betrieb</translation>
    </message>
    <message>
        <source>At work in part</source>
        <translation>Teilweise in Betrieb</translation>
    </message>
    <message>
        <source>%1: there is no module %2 that it could attach to</source>
        <translation>%1: Es gibt kein Modul %2, dem es sich anschließen könnte</translation>
    </message>
    <message>
        <source>Modules without a place</source>
        <translation>Module ohne Platz</translation>
    </message>
    <message>
        <source>Programs that it ran</source>
        <translation>Ausgeführte Programme</translation>
    </message>
    <message>
        <source>Modules</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
</context>
<context>
    <name>SummaryWidget</name>
    <message>
        <source>Properties</source>
        <translation>Eigenschaften</translation>
    </message>
    <message>
        <source>%1:</source>
        <translation>%1:</translation>
    </message>
</context>
<context>
    <name>TaskIndicator</name>
    <message>
        <source>A task is running</source>
        <translation>Ein Auftrag läuft</translation>
    </message>
</context>
<context>
    <name>TaskListModel</name>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Task</source>
        <translation>Auftrag</translation>
    </message>
    <message>
        <source>Element</source>
        <translation>Element</translation>
    </message>
    <message>
        <source>Started</source>
        <translation>Begonnen</translation>
    </message>
    <message>
        <source>Duration</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Element: %1</source>
        <translation>Element: %1</translation>
    </message>
    <message>
        <source>%1. Started at %2, %3.</source>
        <translation>%1. Begonnen um %2, %3.</translation>
    </message>
    <message>
        <source>%1 of %2 %3</source>
        <translation>%1 von %2 %3</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Erledigt</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>Cancelling</source>
        <translation>Wird abgebrochen</translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
</context>
<context>
    <name>TaskPane</name>
    <message>
        <source>Tasks</source>
        <translation>Aufträge</translation>
    </message>
    <message>
        <source>What the chosen task said</source>
        <translation>Was der gewählte Auftrag meldete</translation>
    </message>
    <message>
        <source>Show all that the chosen task said</source>
        <translation>Alles zeigen, was der gewählte Auftrag meldete</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Forget the tasks that have ended</source>
        <translation>Beendete Aufträge vergessen</translation>
    </message>
    <message>
        <source>Ca&amp;ncel</source>
        <translation>A&amp;bbrechen</translation>
    </message>
    <message>
        <source>Stop the chosen task; what was read before stays</source>
        <translation>Den gewählten Auftrag anhalten; was zuvor gelesen wurde, bleibt</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy all that the chosen task said</source>
        <translation>Alles kopieren, was der gewählte Auftrag meldete</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>System console</source>
        <translation>Systemkonsole</translation>
    </message>
    <message>
        <source>The console ends as soon as its change is done.</source>
        <translation>Die Konsole endet, sobald ihre Änderung erledigt ist.</translation>
    </message>
</context>
</TS>
