<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AbstractContainerElement</name>
    <message>
        <source>System</source>
        <comment>plural</comment>
        <translation>System</translation>
    </message>
    <message>
        <source>Ordinary</source>
        <translation>Gewöhnliche</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Quota is on</source>
        <translation>Quota aktiv</translation>
    </message>
    <message>
        <source>Used blocks</source>
        <translation>Belegter Platz</translation>
    </message>
    <message>
        <source>Soft block limit</source>
        <translation>Weiche Platzgrenze</translation>
    </message>
    <message>
        <source>Hard block limit</source>
        <translation>Harte Platzgrenze</translation>
    </message>
    <message>
        <source>Grace block period</source>
        <translation>Schonfrist für Platz</translation>
    </message>
    <message>
        <source>Blocks time to force</source>
        <translation>Platz: Frist endet</translation>
    </message>
    <message>
        <source>Used inodes</source>
        <translation>Belegte Dateien</translation>
    </message>
    <message>
        <source>Soft inode limit</source>
        <translation>Weiche Dateigrenze</translation>
    </message>
    <message>
        <source>Hard inode limit</source>
        <translation>Harte Dateigrenze</translation>
    </message>
    <message>
        <source>Grace inode period</source>
        <translation>Schonfrist für Dateien</translation>
    </message>
    <message>
        <source>Inodes time to force</source>
        <translation>Dateien: Frist endet</translation>
    </message>
</context>
<context>
    <name>AbstractElement</name>
    <message>
        <source>on</source>
        <translation>an</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
</context>
<context>
    <name>AbstractQuotaWidget</name>
    <message numerus="yes">
        <source> files</source>
        <translation>
            <numerusform> Datei</numerusform>
            <numerusform> Dateien</numerusform>
        </translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>In process of inclusion quota configuration file will be created. This process may take several minutes.</source>
        <translation>Beim Einschalten wird die Quota-Datei angelegt. Das kann einige Minuten dauern.</translation>
    </message>
    <message>
        <source>%1 gave no answer: %2</source>
        <translation>%1 gab keine Antwort: %2</translation>
    </message>
    <message>
        <source>%1 was not there at the last read.</source>
        <translation>%1 war beim letzten Lesen nicht da.</translation>
    </message>
    <message>
        <source>There is no such account any more.</source>
        <translation>Dieses Konto gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>There is no device to set limits on: no line of /etc/fstab names a present device with an ext2, ext3 or ext4 file system.</source>
        <translation>Es gibt kein Gerät, für das Grenzen gesetzt werden könnten: Keine Zeile von /etc/fstab nennt ein vorhandenes Gerät mit einem Dateisystem ext2, ext3 oder ext4.</translation>
    </message>
    <message>
        <source>ON</source>
        <translation>AN</translation>
    </message>
    <message>
        <source>OFF</source>
        <translation>AUS</translation>
    </message>
    <message>
        <source>Used are %1, which is more than the box can show.</source>
        <translation>Belegt sind %1, mehr als das Feld zeigen kann.</translation>
    </message>
    <message>
        <source>The amount was not taken, since nothing could be edited just then. Please type it again.</source>
        <translation>Der Wert wurde nicht übernommen, da gerade nichts bearbeitet werden konnte. Bitte geben Sie ihn noch einmal ein.</translation>
    </message>
</context>
<context>
    <name>AbstractUsersGroupsWidget</name>
    <message>
        <source>Device:</source>
        <translation>Gerät:</translation>
    </message>
    <message>
        <source>Choose the columns that are shown</source>
        <translation>Wählen Sie, welche Spalten gezeigt werden</translation>
    </message>
    <message>
        <source>Filters</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Columns that are shown</source>
        <translation>Gezeigte Spalten</translation>
    </message>
    <message>
        <source>%1 was not there at the last read.</source>
        <translation>%1 war beim letzten Lesen nicht da.</translation>
    </message>
</context>
<context>
    <name>AccountQuotas</name>
    <message>
        <source>accounts</source>
        <translation>Konten</translation>
    </message>
</context>
<context>
    <name>AccountTable</name>
    <message>
        <source>%1 has the id %2, for which there are no quotas</source>
        <translation>%1 hat die Nummer %2, für die es keine Quotas gibt</translation>
    </message>
    <message>
        <source>There is no group %1</source>
        <translation>Es gibt keine Gruppe %1</translation>
    </message>
    <message>
        <source>There is no user %1</source>
        <translation>Es gibt keinen Benutzer %1</translation>
    </message>
</context>
<context>
    <name>AmountDialog</name>
    <message>
        <source>A number and a unit: KB, MB, GB, TB, PB or EB, also written KiB, MiB and so on or K, M and so on. Each is 1024 of the one before. Without a unit it is bytes. 0 is no limit.</source>
        <translation>Eine Zahl und eine Einheit: KB, MB, GB, TB, PB oder EB, auch als KiB, MiB und so weiter oder K, M und so weiter. Jede ist das 1024-Fache der vorigen. Ohne Einheit sind es Bytes. 0 bedeutet keine Grenze.</translation>
    </message>
    <message>
        <source>A number, with k for thousands or M for millions. 0 is no limit.</source>
        <translation>Eine Zahl, mit k für Tausende oder M für Millionen. 0 bedeutet keine Grenze.</translation>
    </message>
    <message>
        <source>%1 bytes (%2)</source>
        <translation>%1 Bytes (%2)</translation>
    </message>
    <message>
        <source>Please type a size.</source>
        <translation>Bitte geben Sie eine Größe ein.</translation>
    </message>
    <message>
        <source>Please type a number.</source>
        <translation>Bitte geben Sie eine Zahl ein.</translation>
    </message>
    <message>
        <source>This is no size.</source>
        <translation>Das ist keine Größe.</translation>
    </message>
    <message>
        <source>This is no number.</source>
        <translation>Das ist keine Zahl.</translation>
    </message>
    <message>
        <source>This can be read as two numbers. Please write it without the separator, or with another number of decimals.</source>
        <translation>Dies lässt sich als zwei verschiedene Zahlen lesen. Bitte schreiben Sie es ohne das Trennzeichen oder mit einer anderen Zahl von Nachkommastellen.</translation>
    </message>
    <message>
        <source>There is no such unit.</source>
        <translation>Diese Einheit gibt es nicht.</translation>
    </message>
    <message>
        <source>The kernel stores %1 at most.</source>
        <translation>Der Kernel speichert höchstens %1.</translation>
    </message>
    <message>
        <source>The kernel counts in blocks of 1024 bytes. Less than one is no limit.</source>
        <translation>Der Kernel zählt in Blöcken von 1024 Bytes. Weniger als einer ist keine Grenze.</translation>
    </message>
    <message>
        <source>No limit.</source>
        <translation>Keine Grenze.</translation>
    </message>
    <message>
        <source>Stored as %1: a limit is a number of whole blocks of 1024 bytes.</source>
        <translation>Gespeichert als %1: Eine Grenze ist eine Zahl ganzer Blöcke von 1024 Bytes.</translation>
    </message>
    <message>
        <source>This is no whole number of files.</source>
        <translation>Das ist keine ganze Zahl von Dateien.</translation>
    </message>
</context>
<context>
    <name>AppliedChanges</name>
    <message>
        <source>%1: %2: %3, before: %4</source>
        <extracomment>&quot;anna, /dev/vda1: soft limit on space: 2 Gb, before: none&quot;</extracomment>
        <translation>%1: %2: %3, vorher: %4</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 (%2 bytes)</source>
        <translation>%1 (%2 Bytes)</translation>
    </message>
    <message>
        <source>on</source>
        <translation>an</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>quotas for groups</source>
        <translation>Quotas für Gruppen</translation>
    </message>
    <message>
        <source>quotas for users</source>
        <translation>Quotas für Benutzer</translation>
    </message>
    <message>
        <source>option for groups in /etc/fstab</source>
        <translation>Option für Gruppen in /etc/fstab</translation>
    </message>
    <message>
        <source>option for users in /etc/fstab</source>
        <translation>Option für Benutzer in /etc/fstab</translation>
    </message>
    <message>
        <source>present</source>
        <translation>vorhanden</translation>
    </message>
    <message>
        <source>grace period for space, groups</source>
        <translation>Schonfrist für Platz, Gruppen</translation>
    </message>
    <message>
        <source>grace period for space, users</source>
        <translation>Schonfrist für Platz, Benutzer</translation>
    </message>
    <message>
        <source>grace period for files, groups</source>
        <translation>Schonfrist für Dateien, Gruppen</translation>
    </message>
    <message>
        <source>grace period for files, users</source>
        <translation>Schonfrist für Dateien, Benutzer</translation>
    </message>
</context>
<context>
    <name>BufferData</name>
    <message>
        <source>File %1 can not be open</source>
        <translation>Datei %1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Process %1 can not started</source>
        <translation>Prozess %1 kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>Process %1 can not finished</source>
        <translation>Prozess %1 wird nicht fertig</translation>
    </message>
</context>
<context>
    <name>CrontabReader</name>
    <message>
        <source>Can&apos;n open %1 file</source>
        <translation>Datei %1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>Can&apos;n create %1 file</source>
        <translation>Datei %1 kann nicht angelegt werden</translation>
    </message>
</context>
<context>
    <name>DeviceTable</name>
    <message>
        <source>Unknow file name %1</source>
        <translation>Unbekannter Dateiname %1</translation>
    </message>
    <message>
        <source>Device %1 not mounted</source>
        <translation>Gerät %1 ist nicht eingehängt</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <extracomment>A line of /etc/fstab: device, mount point</extracomment>
        <translation>%1 auf %2</translation>
    </message>
    <message>
        <source>%1: %2, not ext2, ext3 or ext4</source>
        <extracomment>%1 is a line of /etc/fstab, %2 a file system</extracomment>
        <translation>%1: %2, nicht ext2, ext3 oder ext4</translation>
    </message>
    <message>
        <source>%1: blkid could not be asked for it</source>
        <extracomment>%1 is a line of /etc/fstab</extracomment>
        <translation>%1: blkid konnte nicht danach gefragt werden</translation>
    </message>
    <message>
        <source>%1: blkid finds no such device</source>
        <translation>%1: blkid findet kein solches Gerät</translation>
    </message>
    <message>
        <source>%1: blkid finds no file system on it</source>
        <translation>%1: blkid findet kein Dateisystem darauf</translation>
    </message>
    <message>
        <source>%1: blkid finds %2 on it, and %3 only after that</source>
        <extracomment>%1 is a line of /etc/fstab, %2 and %3 are types: of a partition table, and of a file system</extracomment>
        <translation>%1: blkid findet darauf %2, und erst danach %3</translation>
    </message>
    <message>
        <source>%1: blkid lists it as %2; write that into the line</source>
        <extracomment>%1 is a line of /etc/fstab, %2 the path of a device</extracomment>
        <translation>%1: blkid führt es als %2; schreiben Sie das in die Zeile</translation>
    </message>
    <message>
        <source>%1: blkid lists it as %2; write that or UUID=%3 into the line</source>
        <extracomment>%1 is a line of /etc/fstab, %2 the path of a device, %3 the identifier of its file system</extracomment>
        <translation>%1: blkid führt es als %2; schreiben Sie das oder UUID=%3 in die Zeile</translation>
    </message>
    <message>
        <source>%1: a byte order mark stands before it, which mount takes for a part of the name</source>
        <extracomment>%1 is a line of /etc/fstab</extracomment>
        <translation>%1: davor steht eine Bytereihenfolge-Markierung (BOM), die mount für einen Teil des Namens hält</translation>
    </message>
    <message>
        <source>%1: its name is not valid in the character encoding of this system</source>
        <extracomment>%1 is a line of /etc/fstab</extracomment>
        <translation>%1: der Name ist in der Zeichenkodierung dieses Systems nicht gültig</translation>
    </message>
    <message>
        <source>%1: the name of this device is not valid in the character encoding of this system, so it is left out</source>
        <translation>%1: der Name dieses Geräts ist in der Zeichenkodierung dieses Systems nicht gültig; es wird ausgelassen</translation>
    </message>
</context>
<context>
    <name>DeviceWidget</name>
    <message>
        <source>Device (from fstab)</source>
        <translation>Gerät (aus fstab)</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Devices from fstab file which support quotas&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Geräte aus der Datei fstab, die Quotas unterstützen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Filesystem current device&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Dateisystem des gewählten Geräts&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Filesystem:</source>
        <translation>Dateisystem:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Support the ability to set quota on this device&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Ob auf diesem Gerät Quotas gesetzt werden können&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Go to the quota inclusion form</source>
        <translation>Zur Seite, auf der Quotas eingeschaltet werden</translation>
    </message>
    <message>
        <source>Blocks</source>
        <translation>Platz</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Memory limit at which the time is counted in the amount of the grace period. After this time the soft limit will become hard.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Grenze des Platzes, ab der die Schonfrist läuft. Nach ihrem Ablauf wird die weiche Grenze hart.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Soft limit on space</source>
        <translation>Weiche Grenze für Platz</translation>
    </message>
    <message>
        <source>Unit of the soft limit</source>
        <translation>Einheit der weichen Grenze</translation>
    </message>
    <message>
        <source>Set a soft limit on space</source>
        <translation>Eine weiche Grenze für Platz setzen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Memory limit that can not be exceeded under no circumstances&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Grenze des Platzes, die unter keinen Umständen überschritten werden kann&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Hard limit on space</source>
        <translation>Harte Grenze für Platz</translation>
    </message>
    <message>
        <source>Set a hard limit on space</source>
        <translation>Eine harte Grenze für Platz setzen</translation>
    </message>
    <message>
        <source>Unit of the hard limit</source>
        <translation>Einheit der harten Grenze</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Time when the memory soft limit will become hard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Zeitpunkt, zu dem die weiche Grenze für Platz hart wird&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Time when the soft limit on space becomes hard</source>
        <translation>Zeitpunkt, zu dem die weiche Grenze für Platz hart wird</translation>
    </message>
    <message>
        <source>dd.MM.yyyy hh:mm</source>
        <translation>dd.MM.yyyy hh:mm</translation>
    </message>
    <message>
        <source>Soft limit</source>
        <translation>Weiche Grenze</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Current memory consumption&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Derzeit belegter Platz&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Used</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <source>Time to force</source>
        <translation>Frist endet</translation>
    </message>
    <message>
        <source>Hard limit</source>
        <translation>Harte Grenze</translation>
    </message>
    <message>
        <source>Used space</source>
        <translation>Belegter Platz</translation>
    </message>
    <message>
        <source>Type any limit</source>
        <translation>Beliebige Grenze eingeben</translation>
    </message>
    <message>
        <source>Type any soft limit on space</source>
        <translation>Beliebige weiche Grenze für Platz eingeben</translation>
    </message>
    <message>
        <source>Type any hard limit on space</source>
        <translation>Beliebige harte Grenze für Platz eingeben</translation>
    </message>
    <message>
        <source>Inodes</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Current files consumption&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Derzeit belegte Dateien&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Used files</source>
        <translation>Belegte Dateien</translation>
    </message>
    <message>
        <source> files</source>
        <translation> Dateien</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Files limit at which the time is counted in the amount of the grace period. After this time the soft limit will become hard.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Grenze der Dateien, ab der die Schonfrist läuft. Nach ihrem Ablauf wird die weiche Grenze hart.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Set a soft limit on files</source>
        <translation>Eine weiche Grenze für Dateien setzen</translation>
    </message>
    <message>
        <source>Soft limit on files</source>
        <translation>Weiche Grenze für Dateien</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Files limit that can not be exceeded under no circumstances&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Grenze der Dateien, die unter keinen Umständen überschritten werden kann&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Set a hard limit on files</source>
        <translation>Eine harte Grenze für Dateien setzen</translation>
    </message>
    <message>
        <source>Hard limit on files</source>
        <translation>Harte Grenze für Dateien</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Time when the files soft limit will become hard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Zeitpunkt, zu dem die weiche Grenze für Dateien hart wird&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Time when the soft limit on files becomes hard</source>
        <translation>Zeitpunkt, zu dem die weiche Grenze für Dateien hart wird</translation>
    </message>
    <message>
        <source>Type any soft limit on files</source>
        <translation>Beliebige weiche Grenze für Dateien eingeben</translation>
    </message>
    <message>
        <source>Type any hard limit on files</source>
        <translation>Beliebige harte Grenze für Dateien eingeben</translation>
    </message>
</context>
<context>
    <name>DevicesBox</name>
    <message>
        <source>%1 (absent)</source>
        <translation>%1 (fehlt)</translation>
    </message>
</context>
<context>
    <name>FstabRewrite</name>
    <message>
        <source>File %1 was not changed: %2</source>
        <translation>Datei %1 wurde nicht geändert: %2</translation>
    </message>
    <message>
        <source>none of its lines names the device %1 by its path or by UUID=</source>
        <translation>keine ihrer Zeilen nennt das Gerät %1 mit seinem Pfad oder mit UUID=</translation>
    </message>
    <message>
        <source>its line %1 names the device %2</source>
        <translation>ihre Zeile %1 nennt das Gerät %2</translation>
    </message>
    <message>
        <source>%1 as %2; write %3 there, then it can be switched</source>
        <extracomment>%1: &quot;its line 3 names the device /dev/sda1&quot;, %2: as in &quot;LABEL=home&quot;, %3: what to write instead</extracomment>
        <translation>%1 als %2; schreiben Sie dort %3, dann lässt es sich schalten</translation>
    </message>
    <message>
        <source>%1, but blkid does not list that device; look whether it is there and whether blkid works</source>
        <translation>%1, aber blkid führt dieses Gerät nicht; sehen Sie nach, ob es da ist und ob blkid arbeitet</translation>
    </message>
    <message>
        <source>its line %1 for %2 has the option %3, which brings these quotas back at the next start; take it out there, then they can be switched off</source>
        <translation>ihre Zeile %1 für %2 enthält die Option %3, mit der diese Quotas beim nächsten Start wiederkehren; entfernen Sie sie dort, dann lassen sie sich ausschalten</translation>
    </message>
    <message>
        <source>its line %1 for %2 has the option %3, beside which the device could not be mounted with %4; write %5%6 there instead and mount the device again, then these quotas can be switched on</source>
        <translation>ihre Zeile %1 für %2 enthält die Option %3, neben der das Gerät nicht mit %4 eingehängt werden könnte; schreiben Sie dort stattdessen %5%6 und hängen Sie das Gerät neu ein, dann lassen sich diese Quotas einschalten</translation>
    </message>
    <message>
        <source>its line %1 contains a NUL byte; take it out there</source>
        <translation>ihre Zeile %1 enthält ein NUL-Byte; entfernen Sie es dort</translation>
    </message>
    <message>
        <source>its line %1 lacks a mount point or a file system type: %2</source>
        <translation>ihrer Zeile %1 fehlt ein Einhängepunkt oder ein Dateisystemtyp: %2</translation>
    </message>
    <message>
        <source>blkid did not tell which of its lines is for %1; try again when it works</source>
        <translation>blkid sagte nicht, welche ihrer Zeilen zu %1 gehört; versuchen Sie es erneut, wenn es arbeitet</translation>
    </message>
    <message>
        <source>it would not read the same afterwards</source>
        <translation>sie würde danach anders gelesen</translation>
    </message>
    <message>
        <source>it begins with a byte order mark, which mount takes for a part of the first line; save it without that mark</source>
        <translation>sie beginnt mit einer Bytereihenfolge-Markierung (BOM), die mount für einen Teil der ersten Zeile hält; speichern Sie sie ohne diese Markierung</translation>
    </message>
    <message>
        <source>its line %1 for %2 has the option %3 after %4, which switches these quotas off at every mount; take %3 out there, then they can be switched on</source>
        <translation>ihre Zeile %1 für %2 enthält nach %4 die Option %3, die diese Quotas bei jedem Einhängen ausschaltet; nehmen Sie %3 dort heraus, dann lassen sie sich einschalten</translation>
    </message>
</context>
<context>
    <name>FstabWriter</name>
    <message>
        <source>File %1 can not be open</source>
        <translation>Datei %1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>It could not be written and is as it was before: %1</source>
        <translation>Sie konnte nicht geschrieben werden und ist, wie sie war: %1</translation>
    </message>
    <message>
        <source>File %1 was not changed: another program kept changing it; try again for %2 when that has ended</source>
        <translation>Datei %1 wurde nicht geändert: Ein anderes Programm änderte sie fortwährend; versuchen Sie es für %2 erneut, wenn das beendet ist</translation>
    </message>
    <message>
        <source>File %1 was not changed: its comments would be lost, and no copy of it could be made in /var/backups; make room there and try again</source>
        <translation>Datei %1 wurde nicht geändert: Ihre Kommentare gingen verloren, und in /var/backups konnte keine Kopie angelegt werden; schaffen Sie dort Platz und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>The comments of %1 are not written again. The file as it was is kept as %2.</source>
        <translation>Die Kommentare von %1 werden nicht wieder geschrieben. Die bisherige Datei ist als %2 aufbewahrt.</translation>
    </message>
</context>
<context>
    <name>GeneralElement</name>
    <message>
        <source>Quota management</source>
        <translation>Quota-Verwaltung</translation>
    </message>
    <message>
        <source>General quota management settings</source>
        <translation>Allgemeine Einstellungen der Quota-Verwaltung</translation>
    </message>
</context>
<context>
    <name>GeneralWidget</name>
    <message>
        <source>General setings</source>
        <translation>Allgemeine Einstellungen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Devices from fstab file which support quotas&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Geräte aus der Datei fstab, die Quotas unterstützen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Devices (from fstab)</source>
        <translation>Geräte (aus fstab)</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Filesystem current device&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Dateisystem des gewählten Geräts&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Filesystem:</source>
        <translation>Dateisystem:</translation>
    </message>
    <message>
        <source>Without administrator rights blkid does not find every device: some may be missing here.</source>
        <translation>Ohne Verwaltungsrechte findet blkid nicht alle Geräte: Hier können welche fehlen.</translation>
    </message>
    <message>
        <source>There is no device to set quotas on: no line of /etc/fstab names a present device with an ext2, ext3 or ext4 file system.</source>
        <translation>Es gibt kein Gerät, auf dem Quotas gesetzt werden könnten: Keine Zeile von /etc/fstab nennt ein vorhandenes Gerät mit einem Dateisystem ext2, ext3 oder ext4.</translation>
    </message>
    <message>
        <source>Lines of /etc/fstab that were passed over</source>
        <translation>Übergangene Zeilen von /etc/fstab</translation>
    </message>
    <message>
        <source>What is special about this device</source>
        <translation>Besonderheiten dieses Geräts</translation>
    </message>
    <message>
        <source>With this option in the table, the next start of the system may switch these quotas on</source>
        <translation>Mit dieser Option in der Tabelle kann der nächste Start des Systems diese Quotas einschalten</translation>
    </message>
    <message>
        <source>Take usrquota out of /etc/fstab</source>
        <translation>usrquota aus /etc/fstab entfernen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Enable / disable quota support for users on this device&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Quotas für Benutzer auf diesem Gerät ein- oder ausschalten&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Support quota for users</source>
        <translation>Quotas für Benutzer</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;The time that will be given to the user when the memory soft limit is exceeded. After the present time the soft limit will become hard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Frist, die einem Benutzer bleibt, wenn er die weiche Grenze für Platz überschreitet. Danach wird die weiche Grenze hart&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Block grace</source>
        <translation>Schonfrist für Platz</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;The time that will be given to the user when the files soft limit is exceeded. After the present time the soft limit will become hard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Frist, die einem Benutzer bleibt, wenn er die weiche Grenze für Dateien überschreitet. Danach wird die weiche Grenze hart&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Inode grace</source>
        <translation>Schonfrist für Dateien</translation>
    </message>
    <message>
        <source>What the system says of user quota on this device</source>
        <translation>Was das System zu Benutzer-Quotas auf diesem Gerät sagt</translation>
    </message>
    <message>
        <source>Take grpquota out of /etc/fstab</source>
        <translation>grpquota aus /etc/fstab entfernen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Enable / disable quota support for groups on this device&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Quotas für Gruppen auf diesem Gerät ein- oder ausschalten&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Support quota for groups</source>
        <translation>Quotas für Gruppen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;The time that will be given to the group when the memory soft limit is exceeded. After the present time the soft limit will become hard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Frist, die einer Gruppe bleibt, wenn sie die weiche Grenze für Platz überschreitet. Danach wird die weiche Grenze hart&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;The time that will be given to the group when the files soft limit is exceeded. After the present time the soft limit will become hard&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Frist, die einer Gruppe bleibt, wenn sie die weiche Grenze für Dateien überschreitet. Danach wird die weiche Grenze hart&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>What the system says of group quota on this device</source>
        <translation>Was das System zu Gruppen-Quotas auf diesem Gerät sagt</translation>
    </message>
    <message>
        <source>Users, space</source>
        <translation>Benutzer, Platz</translation>
    </message>
    <message>
        <source>Users, files</source>
        <translation>Benutzer, Dateien</translation>
    </message>
    <message>
        <source>Groups, space</source>
        <translation>Gruppen, Platz</translation>
    </message>
    <message>
        <source>Groups, files</source>
        <translation>Gruppen, Dateien</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>In process of inclusion quota configuration files will be created. This process may take several minutes.</source>
        <translation>Beim Einschalten werden die Quota-Dateien angelegt. Das kann einige Minuten dauern.</translation>
    </message>
    <message>
        <source>It was to be switched on, but it is still off. The details of the task say what happened.</source>
        <translation>Sie sollten eingeschaltet werden, sind aber noch aus. Die Einzelheiten des Auftrags sagen, was geschah.</translation>
    </message>
    <message>
        <source>Lines of /etc/fstab that were passed over: %1</source>
        <translation>Übergangene Zeilen von /etc/fstab: %1</translation>
    </message>
    <message>
        <source>To apply the settings you must reboot system.
Reboot now?</source>
        <translation>Damit die Einstellungen wirken, müssen Sie das System neu starten.
Jetzt neu starten?</translation>
    </message>
    <message numerus="yes">
        <source> weeks</source>
        <translation>
            <numerusform> Woche</numerusform>
            <numerusform> Wochen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> days</source>
        <translation>
            <numerusform> Tag</numerusform>
            <numerusform> Tage</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> hours</source>
        <translation>
            <numerusform> Stunde</numerusform>
            <numerusform> Stunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <translation>
            <numerusform> Minute</numerusform>
            <numerusform> Minuten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> seconds</source>
        <translation>
            <numerusform> Sekunde</numerusform>
            <numerusform> Sekunden</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2</source>
        <extracomment>For a screen reader. %1 is &quot;Users, space&quot;, %2 is &quot;weeks&quot;.</extracomment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>*settings will be available after quotas are enabled</source>
        <translation>*Einstellungen sind nach dem Einschalten der Quotas verfügbar</translation>
    </message>
</context>
<context>
    <name>GroupQElement</name>
    <message>
        <source>Group quota settings: %1</source>
        <translation>Quota-Einstellungen der Gruppe: %1</translation>
    </message>
</context>
<context>
    <name>GroupWidget</name>
    <message>
        <source>Quota on this device:</source>
        <translation>Quota auf diesem Gerät:</translation>
    </message>
    <message>
        <source>Quota for groups on this device:</source>
        <translation>Quota für Gruppen auf diesem Gerät:</translation>
    </message>
</context>
<context>
    <name>GroupsElement</name>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Groups quota management</source>
        <translation>Quota-Verwaltung der Gruppen</translation>
    </message>
</context>
<context>
    <name>GroupsWidget</name>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>*To display all information enable quotas for groups on this device</source>
        <translation>*Schalten Sie Quotas für Gruppen auf diesem Gerät ein, um alle Angaben zu sehen</translation>
    </message>
</context>
<context>
    <name>KindForm</name>
    <message>
        <source>*set as soon as quotas are on</source>
        <translation>*wird gesetzt, sobald die Quotas an sind</translation>
    </message>
</context>
<context>
    <name>LimitName</name>
    <message>
        <source>soft limit on space</source>
        <translation>weiche Grenze für Platz</translation>
    </message>
    <message>
        <source>hard limit on space</source>
        <translation>harte Grenze für Platz</translation>
    </message>
    <message>
        <source>soft limit on files</source>
        <translation>weiche Grenze für Dateien</translation>
    </message>
    <message>
        <source>hard limit on files</source>
        <translation>harte Grenze für Dateien</translation>
    </message>
    <message>
        <source>time to force of space</source>
        <translation>Fristende für Platz</translation>
    </message>
    <message>
        <source>time to force of files</source>
        <translation>Fristende für Dateien</translation>
    </message>
</context>
<context>
    <name>LimitNotes</name>
    <message>
        <source>The hard limit is %1, which is more than the box can show.</source>
        <translation>Die harte Grenze ist %1, mehr als das Feld zeigen kann.</translation>
    </message>
    <message>
        <source>The soft limit is %1, which is more than the box can show.</source>
        <translation>Die weiche Grenze ist %1, mehr als das Feld zeigen kann.</translation>
    </message>
    <message>
        <source>The hard limit is exactly %1. The box shows it rounded.</source>
        <translation>Die harte Grenze ist genau %1. Das Feld zeigt sie gerundet.</translation>
    </message>
    <message>
        <source>The soft limit is exactly %1. The box shows it rounded.</source>
        <translation>Die weiche Grenze ist genau %1. Das Feld zeigt sie gerundet.</translation>
    </message>
    <message>
        <source>A hard limit of 0 is no limit.</source>
        <translation>Eine harte Grenze von 0 ist keine Grenze.</translation>
    </message>
    <message>
        <source>A soft limit of 0 is no limit.</source>
        <translation>Eine weiche Grenze von 0 ist keine Grenze.</translation>
    </message>
    <message>
        <source>The hard limit is below 1024 bytes, the size of a block: that is no limit.</source>
        <translation>Die harte Grenze liegt unter 1024 Bytes, der Größe eines Blocks: Das ist keine Grenze.</translation>
    </message>
    <message>
        <source>The soft limit is below 1024 bytes, the size of a block: that is no limit.</source>
        <translation>Die weiche Grenze liegt unter 1024 Bytes, der Größe eines Blocks: Das ist keine Grenze.</translation>
    </message>
    <message>
        <source>The hard limit is stored as %1: in whole blocks of 1024 bytes.</source>
        <translation>Die harte Grenze wird als %1 gespeichert: in ganzen Blöcken von 1024 Bytes.</translation>
    </message>
    <message>
        <source>The soft limit is stored as %1: in whole blocks of 1024 bytes.</source>
        <translation>Die weiche Grenze wird als %1 gespeichert: in ganzen Blöcken von 1024 Bytes.</translation>
    </message>
    <message>
        <source>The soft limit is below what is used.</source>
        <translation>Die weiche Grenze liegt unter dem, was belegt ist.</translation>
    </message>
    <message>
        <source>The hard limit is below the soft limit, which therefore never counts.</source>
        <translation>Die harte Grenze liegt unter der weichen, die deshalb nie zählt.</translation>
    </message>
    <message>
        <source>The hard limit is below what is used: nothing can be added until enough is removed.</source>
        <translation>Die harte Grenze liegt unter dem, was belegt ist: Nichts kann hinzukommen, bis genug entfernt ist.</translation>
    </message>
    <message>
        <source>The hard limit that is typed is no number that the box takes. It takes up to %1; the button beside it takes any amount.</source>
        <translation>Die eingegebene harte Grenze ist keine Zahl, die das Feld annimmt. Es nimmt bis zu %1; die Schaltfläche daneben nimmt jede Menge.</translation>
    </message>
    <message>
        <source>The soft limit that is typed is no number that the box takes. It takes up to %1; the button beside it takes any amount.</source>
        <translation>Die eingegebene weiche Grenze ist keine Zahl, die das Feld annimmt. Es nimmt bis zu %1; die Schaltfläche daneben nimmt jede Menge.</translation>
    </message>
</context>
<context>
    <name>LimitsWriter</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1 is another account by now: nothing was written</source>
        <translation>%1 ist inzwischen ein anderes Konto: Es wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>%1: quotas are off, so nothing was written for %2</source>
        <translation>%1: Die Quotas sind aus, für %2 wurde deshalb nichts geschrieben</translation>
    </message>
    <message>
        <source>%1: the %2 of %3 is %4 by now, not %5 as it was shown: %6 was not written</source>
        <translation>%1: %2 von %3 ist inzwischen %4, nicht %5 wie gezeigt: %6 wurde nicht geschrieben</translation>
    </message>
    <message>
        <source>Quotas could not be switched on on %1: the limits were not written</source>
        <translation>Auf %1 konnten die Quotas nicht eingeschaltet werden: Die Grenzen wurden nicht geschrieben</translation>
    </message>
</context>
<context>
    <name>LocalGroupQuotaElement</name>
    <message>
        <source>Quota</source>
        <translation>Quota</translation>
    </message>
    <message>
        <source>Group quota settings: %1</source>
        <translation>Quota-Einstellungen der Gruppe: %1</translation>
    </message>
</context>
<context>
    <name>LocalGroupQuotaModule</name>
    <message>
        <source>Support group quota settings</source>
        <translation>Quota-Einstellungen für Gruppen</translation>
    </message>
</context>
<context>
    <name>LocalGroupQuotaWidget</name>
    <message>
        <source>Quota</source>
        <translation>Quota</translation>
    </message>
</context>
<context>
    <name>LocalUserQuotaElement</name>
    <message>
        <source>Quota</source>
        <translation>Quota</translation>
    </message>
    <message>
        <source>User quota settings: %1</source>
        <translation>Quota-Einstellungen des Benutzers: %1</translation>
    </message>
</context>
<context>
    <name>LocalUserQuotaModule</name>
    <message>
        <source>Support user quota settings</source>
        <translation>Quota-Einstellungen für Benutzer</translation>
    </message>
</context>
<context>
    <name>LocalUserQuotaWidget</name>
    <message>
        <source>Quota</source>
        <translation>Quota</translation>
    </message>
</context>
<context>
    <name>MemorySizeTransfer</name>
    <message>
        <source>Bytes</source>
        <translation>Bytes</translation>
    </message>
    <message>
        <source>Kb</source>
        <translation>Kb</translation>
    </message>
    <message>
        <source>Mb</source>
        <translation>Mb</translation>
    </message>
    <message>
        <source>Gb</source>
        <translation>Gb</translation>
    </message>
</context>
<context>
    <name>NotificationsElement</name>
    <message>
        <source>Notifications</source>
        <translation>Benachrichtigungen</translation>
    </message>
    <message>
        <source>Notifications settings</source>
        <translation>Einstellungen der Benachrichtigungen</translation>
    </message>
</context>
<context>
    <name>NotificationsManager</name>
    <message>
        <source>Can&apos;n open %1 file</source>
        <translation>Datei %1 kann nicht geöffnet werden</translation>
    </message>
    <message>
        <source>not an absolute path</source>
        <translation>kein absoluter Pfad</translation>
    </message>
    <message>
        <source>Can&apos;n create %1 file</source>
        <translation>Datei %1 kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>%1 was left as it is: what it holds cannot be read.</source>
        <translation>%1 blieb, wie sie ist: Ihr Inhalt kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>%1 held lines that are not written again. The file as it was is kept as %2.</source>
        <translation>%1 enthielt Zeilen, die nicht wieder geschrieben werden. Die bisherige Datei ist als %2 aufbewahrt.</translation>
    </message>
    <message>
        <source>%1 was left as it is: it holds lines that are not written again, and no copy of it could be made in /var/backups.</source>
        <translation>%1 blieb, wie sie ist: Sie enthält Zeilen, die nicht wieder geschrieben werden, und in /var/backups konnte keine Kopie angelegt werden.</translation>
    </message>
    <message>
        <source>%1 was changed by somebody else since it was read. The file as it was is kept as %2.</source>
        <translation>%1 wurde seit dem Lesen von jemand anderem geändert. Die bisherige Datei ist als %2 aufbewahrt.</translation>
    </message>
    <message>
        <source>%1 was left as it is: somebody else changed it since it was read, and no copy of it could be made in /var/backups.</source>
        <translation>%1 blieb, wie sie ist: Jemand anderes hat sie seit dem Lesen geändert, und in /var/backups konnte keine Kopie angelegt werden.</translation>
    </message>
    <message>
        <source>%1 held bytes that are no text in UTF-8. The file as it was is kept as %2.</source>
        <translation>%1 enthielt Bytes, die kein Text in UTF-8 sind. Die bisherige Datei ist als %2 aufbewahrt.</translation>
    </message>
    <message>
        <source>%1 was left as it is: it holds bytes that are no text in UTF-8, and no copy of it could be made in /var/backups.</source>
        <translation>%1 blieb, wie sie ist: Sie enthält Bytes, die kein Text in UTF-8 sind, und in /var/backups konnte keine Kopie angelegt werden.</translation>
    </message>
    <message>
        <source>%1 was left as it is: another program kept changing it; try again when that has ended.</source>
        <translation>%1 blieb, wie sie ist: Ein anderes Programm änderte sie immer wieder; versuchen Sie es erneut, wenn das aufgehört hat.</translation>
    </message>
    <message>
        <source>%1 runs other programs than warnquota, which are looked for in /usr/sbin alone from now on (PATH). The file as it was is kept as %2.</source>
        <translation>%1 startet auch andere Programme als warnquota, die von nun an nur noch in /usr/sbin gesucht werden (PATH). Die Datei ist, wie sie war, als %2 aufgehoben.</translation>
    </message>
    <message>
        <source>%1 was left as it is: the other programs that it runs would be looked for in /usr/sbin alone (PATH), and no copy of it could be made in /var/backups.</source>
        <translation>%1 blieb, wie sie ist: Die anderen Programme, die sie startet, würden nur noch in /usr/sbin gesucht (PATH), und in /var/backups konnte keine Kopie angelegt werden.</translation>
    </message>
</context>
<context>
    <name>NotificationsWidget</name>
    <message>
        <source>Notifications settings</source>
        <translation>Einstellungen der Benachrichtigungen</translation>
    </message>
    <message>
        <source>The system runs warnquota daily too (run_warnquota in /etc/default/quota): with a task here, mails come twice.</source>
        <translation>Auch das System führt warnquota täglich aus (run_warnquota in /etc/default/quota): Mit einer Aufgabe hier kommen die Nachrichten doppelt.</translation>
    </message>
    <message>
        <source>Lines of /etc/cron.d/warnquota that are not understood here are dropped when changed tasks are applied. The file as it was is then kept in /var/backups.</source>
        <translation>Zeilen von /etc/cron.d/warnquota, die hier nicht verstanden werden, entfallen, wenn geänderte Aufgaben angewendet werden. Die bisherige Datei wird dann in /var/backups aufbewahrt.</translation>
    </message>
    <message>
        <source>/etc/cron.d/warnquota does not exist yet: it is made with the first task.</source>
        <translation>/etc/cron.d/warnquota gibt es noch nicht: Die Datei entsteht mit der ersten Aufgabe.</translation>
    </message>
    <message>
        <source>The folder /etc/cron.d does not exist: is cron installed? Tasks cannot be applied before.</source>
        <translation>Den Ordner /etc/cron.d gibt es nicht: Ist cron installiert? Vorher können keine Aufgaben angewendet werden.</translation>
    </message>
    <message>
        <source>There is no task: no mail is sent from here.</source>
        <translation>Es gibt keine Aufgabe: Von hier wird keine Nachricht verschickt.</translation>
    </message>
    <message>
        <source>Notifitations tasks (from cron)</source>
        <translation>Benachrichtigungsaufgaben (aus cron)</translation>
    </message>
    <message>
        <source>Add new task</source>
        <translation>Neue Aufgabe hinzufügen</translation>
    </message>
    <message>
        <source>+</source>
        <translation>+</translation>
    </message>
    <message>
        <source>Task</source>
        <translation>Aufgabe</translation>
    </message>
    <message>
        <source>Notify:</source>
        <translation>Benachrichtigt:</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Every:</source>
        <translation>Wiederholt:</translation>
    </message>
    <message>
        <source>month</source>
        <translation>monatlich</translation>
    </message>
    <message>
        <source>day</source>
        <translation>täglich</translation>
    </message>
    <message>
        <source>hour</source>
        <translation>stündlich</translation>
    </message>
    <message>
        <source>When it runs</source>
        <translation>Wann sie läuft</translation>
    </message>
    <message>
        <source>dd.MM.yyyy H:mm</source>
        <translation>dd.MM.yyyy H:mm</translation>
    </message>
    <message>
        <source>Expert mode (cron)</source>
        <translation>Expertenmodus (cron)</translation>
    </message>
    <message>
        <source>Five time fields of a cron line: minute, hour, day of the month, month, day of the week</source>
        <translation>Fünf Zeitfelder einer cron-Zeile: Minute, Stunde, Tag des Monats, Monat, Wochentag</translation>
    </message>
    <message>
        <source>Five cron time fields</source>
        <translation>Fünf Zeitfelder von cron</translation>
    </message>
    <message>
        <source>Delete current task</source>
        <translation>Gewählte Aufgabe löschen</translation>
    </message>
    <message>
        <source>−</source>
        <translation>−</translation>
    </message>
    <message>
        <source>Global settings</source>
        <translation>Allgemeine Einstellungen</translation>
    </message>
    <message>
        <source>Configuration notifications for users and groups</source>
        <translation>Konfiguration der Benachrichtigungen für Benutzer und Gruppen</translation>
    </message>
    <message>
        <source>Users responsible for group disk usage</source>
        <translation>Verantwortliche für die Belegung durch Gruppen</translation>
    </message>
    <message>
        <source>Descriptions of devices with disk quotas</source>
        <translation>Beschreibungen der Geräte mit Quotas</translation>
    </message>
    <message>
        <source>A schedule has five fields of digits, &quot;*&quot;, &quot;/&quot;, &quot;,&quot; and &quot;-&quot;: minute, hour, day of the month, month, day of the week.</source>
        <translation>Ein Zeitplan hat fünf Felder aus Ziffern, „*“, „/“, „,“ und „-“: Minute, Stunde, Tag des Monats, Monat, Wochentag.</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>new task</source>
        <translation>neue Aufgabe</translation>
    </message>
    <message>
        <source>the minute (0 to 59)</source>
        <translation>die Minute (0 bis 59)</translation>
    </message>
    <message>
        <source>the hour (0 to 23)</source>
        <translation>die Stunde (0 bis 23)</translation>
    </message>
    <message>
        <source>the day of the month (1 to 31)</source>
        <translation>den Tag des Monats (1 bis 31)</translation>
    </message>
    <message>
        <source>the month (1 to 12)</source>
        <translation>den Monat (1 bis 12)</translation>
    </message>
    <message>
        <source>the day of the week (0 to 7)</source>
        <translation>den Wochentag (0 bis 7)</translation>
    </message>
    <message>
        <source>cron looks for %1 from the home folder of %2: its text is neither shown nor written here.</source>
        <translation>cron sucht %1 vom persönlichen Ordner von %2 aus: Der Text wird hier weder gezeigt noch geschrieben.</translation>
    </message>
    <message>
        <source>The shell that cron starts may read %1 as another path: its text is not edited here.</source>
        <translation>Die Shell, die cron startet, kann %1 als einen anderen Pfad lesen: Der Text wird hier nicht bearbeitet.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist: make it before you edit the text of %2.</source>
        <translation>Den Ordner %1 gibt es nicht: Legen Sie ihn an, bevor Sie den Text von %2 bearbeiten.</translation>
    </message>
    <message>
        <source>%1 does not exist: it is made when its text is edited and applied.</source>
        <translation>%1 gibt es nicht: Die Datei entsteht, wenn ihr Text bearbeitet und angewendet wird.</translation>
    </message>
    <message>
        <source>This task runs as %1. With changes applied it runs as root.</source>
        <translation>Diese Aufgabe läuft als %1. Mit angewendeten Änderungen läuft sie als root.</translation>
    </message>
    <message>
        <source>This task is not a run of warnquota: %1. With changes applied it is rewritten as a run of warnquota.</source>
        <translation>Diese Aufgabe führt nicht warnquota aus: %1. Mit angewendeten Änderungen wird sie zu einem Aufruf von warnquota.</translation>
    </message>
    <message>
        <source>The line of this task says more than this page can: %1. With changes applied it is rewritten as: %2.</source>
        <translation>Die Zeile dieser Aufgabe sagt mehr, als diese Seite kann: %1. Mit angewendeten Änderungen lautet sie: %2.</translation>
    </message>
    <message>
        <source>This line of the cron file
%1
is replaced by
%2</source>
        <extracomment>%1 and %2 are lines of the cron file.</extracomment>
        <translation>Diese Zeile der cron-Datei
%1
wird ersetzt durch
%2</translation>
    </message>
    <message>
        <source>It ran as %1 and will run as root, with the mail command that %2 names.</source>
        <translation>Sie lief als %1 und wird als root laufen, mit dem Mail-Befehl, den %2 nennt.</translation>
    </message>
    <message>
        <source>It ran another program and will send quota warnings.</source>
        <translation>Sie führte ein anderes Programm aus und wird Quota-Warnungen verschicken.</translation>
    </message>
    <message>
        <source>The file as it was is kept in /var/backups. Apply this?</source>
        <translation>Die bisherige Datei wird in /var/backups aufbewahrt. Möchten Sie dies anwenden?</translation>
    </message>
    <message>
        <source>cron refuses %1 of task %2, and with it all tasks.</source>
        <extracomment>%1 is a field of the line: &quot;the hour (0 to 23)&quot;, %2 the name of a task</extracomment>
        <translation>cron lehnt %1 der Aufgabe %2 ab, und damit alle Aufgaben.</translation>
    </message>
    <message>
        <source>At (day hours:minutes):</source>
        <translation>Um (Tag Stunden:Minuten):</translation>
    </message>
    <message>
        <source>At (hours:minutes):</source>
        <translation>Um (Stunden:Minuten):</translation>
    </message>
    <message>
        <source>At (minutes):</source>
        <translation>Um (Minuten):</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Read all groups list</source>
        <translation>Liste aller Gruppen lesen</translation>
    </message>
    <message>
        <source>Read all users list</source>
        <translation>Liste aller Benutzer lesen</translation>
    </message>
    <message>
        <source>Read genaral quota settings</source>
        <translation>Allgemeine Quota-Einstellungen lesen</translation>
    </message>
    <message>
        <source>Read group quota settings</source>
        <translation>Quota-Einstellungen der Gruppe lesen</translation>
    </message>
    <message>
        <source>Read user quota settings</source>
        <translation>Quota-Einstellungen des Benutzers lesen</translation>
    </message>
    <message>
        <source>Update general settings</source>
        <translation>Allgemeine Einstellungen ändern</translation>
    </message>
    <message>
        <source>Update user settings</source>
        <translation>Einstellungen des Benutzers ändern</translation>
    </message>
    <message>
        <source>w</source>
        <translation>W</translation>
    </message>
    <message>
        <source>d</source>
        <translation>T</translation>
    </message>
    <message>
        <source>h</source>
        <translation>h</translation>
    </message>
    <message>
        <source>min</source>
        <translation>min</translation>
    </message>
    <message>
        <source>sec</source>
        <translation>s</translation>
    </message>
    <message>
        <source>Update notifications settings</source>
        <translation>Einstellungen der Benachrichtigungen ändern</translation>
    </message>
    <message>
        <source>weeks</source>
        <translation>Wochen</translation>
    </message>
    <message>
        <source>days</source>
        <translation>Tage</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Applied: %1</source>
        <translation>Angewendet: %1</translation>
    </message>
</context>
<context>
    <name>QuotaCtl</name>
    <message>
        <source>Unknown error while executing quotactl</source>
        <translation>Unbekannter Fehler beim Aufruf von quotactl</translation>
    </message>
    <message>
        <source>The caller does not have the necessary rights (CAP_SYS_ADMIN) to perform the specified operation</source>
        <translation>Der Aufrufer hat nicht die Rechte (CAP_SYS_ADMIN), die diese Operation erfordert</translation>
    </message>
    <message>
        <source>File specified in special or addr not exist</source>
        <translation>Die in special oder addr genannte Datei gibt es nicht</translation>
    </message>
    <message>
        <source>No disk map was found for the specified user. Quota turned off in file system</source>
        <translation>Für den genannten Benutzer wurden keine Quotas gefunden. Quotas sind auf dem Dateisystem ausgeschaltet</translation>
    </message>
    <message>
        <source>Quota file specified in addr exist but is not a perpetual file or quota file specified in addr exist but is not on the file system of the specified in special</source>
        <translation>Die in addr genannte Quota-Datei ist keine gewöhnliche Datei oder liegt nicht auf dem in special genannten Dateisystem</translation>
    </message>
    <message>
        <source>Wrong value addr or special</source>
        <translation>Falscher Wert von addr oder special</translation>
    </message>
    <message>
        <source>Value special does not indicate on block device</source>
        <translation>Der Wert von special nennt kein Blockgerät</translation>
    </message>
    <message>
        <source>Attemp to execut Q_QUOTAON but another start is already in progress Q_QUOTAON</source>
        <translation>Q_QUOTAON wurde versucht, aber ein anderes Q_QUOTAON läuft schon</translation>
    </message>
    <message>
        <source>Wrong value cmd or type</source>
        <translation>Falscher Wert von cmd oder type</translation>
    </message>
    <message>
        <source>Core assembled with parameter turned off CONFIG_QUOTA</source>
        <translation>Der Kernel wurde ohne CONFIG_QUOTA gebaut</translation>
    </message>
</context>
<context>
    <name>QuotaFacts</name>
    <message>
        <source>Group quota is on</source>
        <translation>Gruppen-Quota ist an</translation>
    </message>
    <message>
        <source>Group quota is off</source>
        <translation>Gruppen-Quota ist aus</translation>
    </message>
    <message>
        <source>User quota is on</source>
        <translation>Benutzer-Quota ist an</translation>
    </message>
    <message>
        <source>User quota is off</source>
        <translation>Benutzer-Quota ist aus</translation>
    </message>
    <message>
        <source>Mounted without %1: limits stop nobody, unless quotaon was run since</source>
        <translation>Ohne %1 eingehängt: Grenzen halten niemanden auf, es sei denn, quotaon lief seither</translation>
    </message>
    <message>
        <source>Configured: %1 stands in /etc/fstab</source>
        <translation>Konfiguriert: %1 steht in /etc/fstab</translation>
    </message>
    <message>
        <source>Not configured: no %1 in a line of /etc/fstab that is recognised as this device</source>
        <translation>Nicht konfiguriert: kein %1 in einer Zeile von /etc/fstab, die als dieses Gerät erkannt wird</translation>
    </message>
    <message>
        <source>In force: mounted with an option for group quota</source>
        <translation>In Kraft: mit einer Option für Gruppen-Quota eingehängt</translation>
    </message>
    <message>
        <source>Not in force: mounted without an option for group quota</source>
        <translation>Nicht in Kraft: ohne Option für Gruppen-Quota eingehängt</translation>
    </message>
    <message>
        <source>In force: mounted with an option for user quota</source>
        <translation>In Kraft: mit einer Option für Benutzer-Quota eingehängt</translation>
    </message>
    <message>
        <source>Not in force: mounted without an option for user quota</source>
        <translation>Nicht in Kraft: ohne Option für Benutzer-Quota eingehängt</translation>
    </message>
    <message>
        <source>Quota file %1 is present</source>
        <translation>Quota-Datei %1 ist vorhanden</translation>
    </message>
    <message>
        <source>Quota file %1 is missing</source>
        <translation>Quota-Datei %1 fehlt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Grace period for space: %1</source>
        <translation>Schonfrist für Platz: %1</translation>
    </message>
    <message>
        <source>Grace period for files: %1</source>
        <translation>Schonfrist für Dateien: %1</translation>
    </message>
    <message>
        <source>This device is not mounted.</source>
        <translation>Dieses Gerät ist nicht eingehängt.</translation>
    </message>
    <message>
        <source>Mounted on %1</source>
        <translation>Eingehängt unter %1</translation>
    </message>
    <message>
        <source>Mounted on %1, %2</source>
        <translation>Eingehängt unter %1, %2</translation>
    </message>
    <message>
        <source>This file system keeps its quotas in itself (ext4 feature &quot;quota&quot;): they count from every mount on. Switching them and setting grace periods is not available here, because the programs that do so work on quota files, and this file system has none.</source>
        <translation>Dieses Dateisystem führt seine Quotas in sich selbst (ext4-Merkmal „quota“): Sie zählen ab jedem Einhängen. Schalten und Schonfristen stehen hier nicht zur Verfügung, weil die Programme dafür mit Quota-Dateien arbeiten und dieses Dateisystem keine hat.</translation>
    </message>
    <message>
        <source>This device is missing: the last read did not find it.</source>
        <translation>Dieses Gerät fehlt: Beim letzten Lesen wurde es nicht gefunden.</translation>
    </message>
    <message>
        <source>Which devices there are is not known: %1 did not tell. Please refresh this when that is mended; the list of tasks says what went wrong.</source>
        <extracomment>%1 is a program or a file: blkid, /etc/fstab</extracomment>
        <translation>Welche Geräte es gibt, ist nicht bekannt: %1 hat keine Auskunft gegeben. Bitte aktualisieren Sie dies, wenn das behoben ist; die Aufgabenliste sagt, was nicht gelang.</translation>
    </message>
</context>
<context>
    <name>QuotaGeneralModule</name>
    <message>
        <source>Support system quota</source>
        <translation>Quotas des Systems</translation>
    </message>
</context>
<context>
    <name>QuotaPlugin</name>
    <message>
        <source>LocalQuotaPlugin</source>
        <translation>LocalQuotaPlugin</translation>
    </message>
    <message>
        <source>Support quota for users and groups</source>
        <translation>Quotas für Benutzer und Gruppen</translation>
    </message>
    <message>
        <source>the kernel has no module quota_v2, or it could not be asked for it (%1).</source>
        <translation>Der Kernel hat kein Modul quota_v2 oder konnte nicht danach gefragt werden (%1).</translation>
    </message>
</context>
<context>
    <name>QuotaPrograms</name>
    <message>
        <source>Unknown type option for createQuotaFiles</source>
        <translation>Unbekannter Typ für createQuotaFiles</translation>
    </message>
    <message>
        <source>Process %1 %2 can not started</source>
        <translation>Prozess %1 %2 kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>Process %1 can not started</source>
        <translation>Prozess %1 kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>Process %1 can not finished</source>
        <translation>Prozess %1 wird nicht fertig</translation>
    </message>
    <message>
        <source>Process %1 %2 return error %3</source>
        <translation>Prozess %1 %2 meldet den Fehler %3</translation>
    </message>
</context>
<context>
    <name>QuotaSwitch</name>
    <message>
        <source>%1 is not mounted. It has the option %2 in %3 now; mount it, then its quotas can be switched on: %4</source>
        <translation>%1 ist nicht eingehängt. In %3 steht dafür jetzt die Option %2; hängen Sie es ein, dann lassen sich die Quotas einschalten: %4</translation>
    </message>
    <message>
        <source>%1 could not be mounted again with the option %2, which was therefore taken out of %3 again: %4</source>
        <translation>%1 konnte mit der Option %2 nicht neu eingehängt werden; sie wurde deshalb wieder aus %3 entfernt: %4</translation>
    </message>
    <message>
        <source>%1 could not be mounted again with the option %2. Take it out of %3 before the next start: %4</source>
        <translation>%1 konnte mit der Option %2 nicht neu eingehängt werden. Entfernen Sie sie vor dem nächsten Start aus %3: %4</translation>
    </message>
    <message>
        <source>%1: these quotas are off now, and come back at the next start unless the option %2 is taken out of %3</source>
        <translation>%1: Diese Quotas sind jetzt aus und kehren beim nächsten Start wieder, wenn die Option %2 nicht aus %3 entfernt wird</translation>
    </message>
    <message>
        <source>%1: quotas count on from the file %2, dated %3. What was stored or removed while they were off is not counted; to count anew, switch them off, run %4 and switch them on.</source>
        <translation>%1: Die Quotas zählen mit der Datei %2 weiter, die vom %3 ist. Was gespeichert oder gelöscht wurde, während sie aus waren, ist nicht gezählt; um neu zu zählen, schalten Sie sie aus, führen Sie %4 aus und schalten Sie sie wieder ein.</translation>
    </message>
</context>
<context>
    <name>SettingsWriter</name>
    <message>
        <source>grace period for space</source>
        <translation>Schonfrist für Platz</translation>
    </message>
    <message>
        <source>grace period for files</source>
        <translation>Schonfrist für Dateien</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1: quotas of this kind are on by now, so their option stays in /etc/fstab</source>
        <translation>%1: Quotas dieser Art sind inzwischen an, ihre Option bleibt deshalb in /etc/fstab</translation>
    </message>
    <message>
        <source>groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>users</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>%1: the grace periods for %2 were not set, since quotas are off</source>
        <translation>%1: Die Schonfristen für %2 wurden nicht gesetzt, weil die Quotas aus sind</translation>
    </message>
    <message>
        <source>%1: the %2 for %3 is %4 by now, not what was shown: %5 was not written</source>
        <translation>%1: %2 für %3 ist inzwischen %4, nicht der gezeigte Wert: %5 wurde nicht geschrieben</translation>
    </message>
</context>
<context>
    <name>UserElement</name>
    <message>
        <source>User quota settings: %1</source>
        <translation>Quota-Einstellungen des Benutzers: %1</translation>
    </message>
</context>
<context>
    <name>UserWidget</name>
    <message>
        <source>Quota on this device:</source>
        <translation>Quota auf diesem Gerät:</translation>
    </message>
    <message>
        <source>Quota for user on this device:</source>
        <translation>Quota für Benutzer auf diesem Gerät:</translation>
    </message>
</context>
<context>
    <name>UsersElement</name>
    <message>
        <source>Users</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Users quota management</source>
        <translation>Quota-Verwaltung der Benutzer</translation>
    </message>
</context>
<context>
    <name>UsersWidget</name>
    <message>
        <source>Users</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>*To display all information enable quotas for users on this device</source>
        <translation>*Schalten Sie Quotas für Benutzer auf diesem Gerät ein, um alle Angaben zu sehen</translation>
    </message>
</context>
</TS>
