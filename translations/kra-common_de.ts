<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AppException</name>
    <message>
        <source>%1 ended with exit code %2</source>
        <translation>%1 endete mit dem Rückgabewert %2</translation>
    </message>
</context>
<context>
    <name>Element</name>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
</context>
<context>
    <name>ElementPages</name>
    <message>
        <source>Changes not applied</source>
        <translation>Nicht angewendete Änderungen</translation>
    </message>
    <message>
        <source>The page &quot;%1&quot; has changes that have not been applied.</source>
        <translation>Die Seite „%1“ enthält Änderungen, die nicht angewendet wurden.</translation>
    </message>
    <message>
        <source>Apply them now?</source>
        <translation>Möchten Sie diese jetzt anwenden?</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>&amp;Discard changes</source>
        <translation>Änderungen &amp;verwerfen</translation>
    </message>
    <message>
        <source>&amp;Stay on this page</source>
        <translation>Auf dieser Seite &amp;bleiben</translation>
    </message>
    <message>
        <source>A task is under way</source>
        <translation>Ein Auftrag läuft</translation>
    </message>
    <message>
        <source>What was being edited is not there any more. What had been typed is lost.</source>
        <translation>Was bearbeitet wurde, gibt es nicht mehr. Die Eingaben sind verloren.</translation>
    </message>
    <message>
        <source>What was typed is still here and can be applied again. The computer may differ from it by now: Revert shows what the computer has.</source>
        <translation>Ihre Eingaben sind noch da und können erneut angewendet werden. Der Rechner kann inzwischen davon abweichen: „Zurücksetzen“ zeigt, was auf dem Rechner gilt.</translation>
    </message>
    <message>
        <source>The changes are being applied. &quot;%1&quot; is shown after that.</source>
        <translation>Die Änderungen werden angewendet. Danach wird „%1“ angezeigt.</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Choose an entry of the tree to see its page.</source>
        <translation>Wählen Sie einen Eintrag des Baums, um seine Seite zu sehen.</translation>
    </message>
    <message>
        <source>There is nothing to set here.</source>
        <translation>Hier gibt es nichts einzustellen.</translation>
    </message>
    <message>
        <source>There is nothing to set here.
Choose one of the entries below it in the tree.</source>
        <translation>Hier gibt es nichts einzustellen.
Wählen Sie im Baum einen der Einträge darunter.</translation>
    </message>
    <message>
        <source>%1: failed, without saying why.</source>
        <translation>%1: fehlgeschlagen, ohne Angabe eines Grundes.</translation>
    </message>
</context>
<context>
    <name>FileReplacement</name>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>%1; what somebody else saved meanwhile is kept as %2</source>
        <extracomment>%1: what the system said, %2: a path</extracomment>
        <translation>%1; was jemand anders inzwischen gespeichert hat, ist als %2 aufgehoben</translation>
    </message>
</context>
<context>
    <name>MessageArea</name>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Hide this message</source>
        <translation>Diese Meldung ausblenden</translation>
    </message>
</context>
<context>
    <name>PluginLoader</name>
    <message>
        <source>an exception without a text</source>
        <translation>eine Ausnahme ohne Text</translation>
    </message>
    <message>
        <source>Nothing is loaded from %1 with administrator rights, since another user could have changed it: %2.</source>
        <translation>Von %1 wird mit Verwaltungsrechten nichts geladen, weil ein anderer Benutzer es verändert haben könnte: %2.</translation>
    </message>
    <message>
        <source>%1 is no plug-in: %2</source>
        <translation>%1 ist keine Erweiterung: %2</translation>
    </message>
    <message>
        <source>%1 is a plug-in for &quot;%2&quot;; plug-ins for &quot;%3&quot; are loaded here.</source>
        <translation>%1 ist eine Erweiterung für „%2“; hier werden Erweiterungen für „%3“ geladen.</translation>
    </message>
    <message>
        <source>The constructor of the plug-in %1 threw an exception: %2</source>
        <translation>Der Konstruktor der Erweiterung %1 warf eine Ausnahme: %2</translation>
    </message>
    <message>
        <source>%1 exports no class.</source>
        <translation>%1 stellt keine Klasse bereit.</translation>
    </message>
    <message>
        <source>%1 exports the class %2, which is not derived from Plugin.</source>
        <translation>%1 stellt die Klasse %2 bereit, die nicht von Plugin abgeleitet ist.</translation>
    </message>
    <message>
        <source>The plug-in %1 threw an exception when it was asked whether it can work here: %2</source>
        <translation>Die Erweiterung %1 warf eine Ausnahme, als sie gefragt wurde, ob sie hier arbeiten kann: %2</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot work here.</source>
        <translation>Die Erweiterung %1 kann hier nicht arbeiten.</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot work here: %2</source>
        <translation>Die Erweiterung %1 kann hier nicht arbeiten: %2</translation>
    </message>
    <message>
        <source>The plug-in %1 brings the module &quot;%2&quot;, and there is one of that name already.</source>
        <translation>Die Erweiterung %1 bringt das Modul „%2“ mit, und eines dieses Namens gibt es schon.</translation>
    </message>
    <message>
        <source>%1 cannot be loaded: %2</source>
        <translation>%1 kann nicht geladen werden: %2</translation>
    </message>
    <message>
        <source>%1 is not a folder that can be read.</source>
        <translation>%1 ist kein lesbarer Ordner.</translation>
    </message>
    <message>
        <source>There is no file %1.</source>
        <translation>Die Datei %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>%1 cannot be looked at</source>
        <translation>%1 kann nicht untersucht werden</translation>
    </message>
    <message>
        <source>%1 belongs to the user with the id %2</source>
        <translation>%1 gehört dem Benutzer mit der Nummer %2</translation>
    </message>
    <message>
        <source>%1 can be written by everybody</source>
        <translation>%1 ist für alle schreibbar</translation>
    </message>
    <message>
        <source>%1 can be written by its group</source>
        <translation>%1 ist für die Gruppe schreibbar</translation>
    </message>
</context>
<context>
    <name>Process</name>
    <message>
        <source>could not be started: %1</source>
        <translation>konnte nicht gestartet werden: %1</translation>
    </message>
    <message>
        <source>did not end in time and was killed</source>
        <translation>endete nicht rechtzeitig und wurde abgebrochen</translation>
    </message>
    <message>
        <source>was ended by a signal</source>
        <translation>wurde durch ein Signal beendet</translation>
    </message>
    <message>
        <source>exit code %1</source>
        <translation>Rückgabewert %1</translation>
    </message>
    <message>
        <source>it did not start in time</source>
        <translation>der Start dauerte zu lange</translation>
    </message>
    <message>
        <source>could not be started: no such program, or no right to run it</source>
        <translation>konnte nicht gestartet werden: Das Programm fehlt oder darf nicht ausgeführt werden</translation>
    </message>
    <message>
        <source>of its output the first %1 MiB are kept</source>
        <translation>von der Ausgabe werden die ersten %1 MiB aufbewahrt</translation>
    </message>
</context>
<context>
    <name>TaskObserver</name>
    <message>
        <source>Cancelled: what was read before is still shown.</source>
        <translation>Abgebrochen: Gezeigt wird noch, was zuvor gelesen wurde.</translation>
    </message>
    <message>
        <source>Cancelled: this has not been read yet.</source>
        <translation>Abgebrochen: Dies wurde noch nicht gelesen.</translation>
    </message>
</context>
<context>
    <name>TaskWorker</name>
    <message>
        <source>The task was ended by an unknown error.</source>
        <translation>Der Auftrag endete durch einen unbekannten Fehler.</translation>
    </message>
    <message>
        <source>Running %1</source>
        <translation>%1 läuft</translation>
    </message>
</context>
<context>
    <name>ViewEditElementWidget</name>
    <message>
        <source>This must be a number between %1 and %2.</source>
        <translation>Dies muss eine Zahl zwischen %1 und %2 sein.</translation>
    </message>
    <message>
        <source>This value cannot be applied. Please correct it.</source>
        <translation>Dieser Wert kann nicht angewendet werden. Bitte berichtigen Sie ihn.</translation>
    </message>
    <message>
        <source>This is being read. Please apply it when that has ended.</source>
        <translation>Dies wird gerade gelesen. Bitte wenden Sie es danach an.</translation>
    </message>
    <message>
        <source>What is typed here cannot be applied. Please correct it.</source>
        <translation>Diese Eingabe kann nicht angewendet werden. Bitte berichtigen Sie sie.</translation>
    </message>
    <message>
        <source>This was read again before the warning was answered, so nothing was applied. Please look at it and apply it again.</source>
        <translation>Vor der Antwort auf die Warnung wurde neu gelesen, deshalb wurde nichts angewendet. Bitte sehen Sie es sich an und wenden Sie es erneut an.</translation>
    </message>
    <message>
        <source>What was applied was not read again, since that was cancelled. Please refresh this before you change anything else.</source>
        <translation>Was angewendet wurde, wurde nicht noch einmal gelesen, da das abgebrochen wurde. Bitte aktualisieren Sie dies, bevor Sie etwas anderes ändern.</translation>
    </message>
    <message>
        <source>Nothing was applied: no task was started for it.</source>
        <translation>Nichts wurde angewendet: Dafür wurde keine Aufgabe gestartet.</translation>
    </message>
</context>
</TS>
