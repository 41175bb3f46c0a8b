<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en_GB">
<context>
    <name>AboutViewController</name>
    <message>
        <source>About</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>Credits</source>
        <translation>Mitwirkende</translation>
    </message>
    <message>
        <source>Sonvika</source>
        <translation>Sonvika</translation>
    </message>
    <message>
        <source>&amp;Web Site</source>
        <translation>&amp;Website</translation>
    </message>
    <message>
        <source>&amp;Social</source>
        <translation>&amp;Soziale Medien</translation>
    </message>
    <message>
        <source>An editor for the tags of MP3 and M4A files.</source>
        <translation>Ein Editor für die Tags von MP3- und M4A-Dateien.</translation>
    </message>
    <message>
        <source>Made with TagLib, Qt, GIFLIB, libimagequant, xxHash and zlib.</source>
        <translation>Erstellt mit TagLib, Qt, GIFLIB, libimagequant, xxHash und zlib.</translation>
    </message>
    <message>
        <source>Thanks to all who make them, and who make them free.</source>
        <translation>Dank an alle, die sie entwickeln und frei zugänglich machen.</translation>
    </message>
    <message>
        <source>Sonvika is free software: you may use, share and change it under the GNU General Public License, version&amp;nbsp;3. It comes without any warranty.</source>
        <translation>Sonvika ist freie Software: Nutzung, Weitergabe und Änderung sind unter der GNU General Public License, Version&amp;nbsp;3, erlaubt. Es besteht keinerlei Gewährleistung.</translation>
    </message>
</context>
<context>
    <name>Actions</name>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Open &amp;Folder…</source>
        <translation>&amp;Ordner öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Sho&amp;w in File Manager</source>
        <translation>In &amp;Dateiverwaltung anzeigen</translation>
    </message>
    <message>
        <source>Rena&amp;me…</source>
        <translation>&amp;Umbenennen&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Remove from List</source>
        <translation>Aus der &amp;Liste entfernen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alle auswählen</translation>
    </message>
    <message>
        <source>&amp;Deselect All</source>
        <translation>Auswahl auf&amp;heben</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben verschieben</translation>
    </message>
    <message>
        <source>Move Do&amp;wn</source>
        <translation>Nach &amp;unten verschieben</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Number Tracks</source>
        <translation>Tracks &amp;nummerieren</translation>
    </message>
    <message>
        <source>&amp;Save Album Art…</source>
        <translation>Cover &amp;speichern&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;Copy Album Art</source>
        <translation>Cover &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste Album Art</source>
        <translation>Cover &amp;einfügen</translation>
    </message>
    <message>
        <source>&amp;Delete Album Art</source>
        <translation>Cover &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Einstellungen&#xa0;…</translation>
    </message>
    <message>
        <source>&amp;About Sonvika</source>
        <translation>Ü&amp;ber Sonvika</translation>
    </message>
    <message>
        <source>Add files to the list</source>
        <translation>Dateien zur Liste hinzufügen</translation>
    </message>
    <message>
        <source>Rename the selected files from their tags</source>
        <translation>Ausgewählte Dateien nach ihren Tags umbenennen</translation>
    </message>
    <message>
        <source>Look at the selected file and listen to it</source>
        <translation>Ausgewählte Datei ansehen und anhören</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove the selected files from the list; the files stay on disk</source>
        <translation>Ausgewählte Dateien aus der Liste entfernen; auf dem Datenträger bleiben sie erhalten</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Remove Unsupported Tags</source>
        <translation>Nicht unterstützte Tags entfernen</translation>
    </message>
    <message>
        <source>Remove All Tags</source>
        <translation>Alle Tags entfernen</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>De&amp;lete Album Art</source>
        <translation>Cover &amp;löschen</translation>
    </message>
</context>
<context>
    <name>AlbumArtView</name>
    <message>
        <source>%1 × %2 pixels, %3, %4</source>
        <translation>%1 × %2 Pixel, %3, %4</translation>
    </message>
    <message>
        <source>Can&apos;t be shown
%1</source>
        <comment>%1 tells the size and the format</comment>
        <translation>Kann nicht angezeigt werden
%1</translation>
    </message>
</context>
<context>
    <name>ArtworkCommands</name>
    <message>
        <source>Change Image</source>
        <translation>Bild ändern</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>The picture can&apos;t be decoded or converted</source>
        <translation>Das Bild kann nicht dekodiert oder umgewandelt werden</translation>
    </message>
</context>
<context>
    <name>CommandValidation</name>
    <message>
        <source>Replace Album Art</source>
        <translation>Cover ersetzen</translation>
    </message>
    <message>
        <source>Add Album Art</source>
        <translation>Cover hinzufügen</translation>
    </message>
    <message>
        <source>Close Quick Look</source>
        <translation>Vorschau schließen</translation>
    </message>
    <message>
        <source>Quick Look</source>
        <translation>Vorschau</translation>
    </message>
</context>
<context>
    <name>Deed</name>
    <message numerus="yes">
        <source>%Ln files numbered</source>
        <translation>
            <numerusform>%Ln Datei nummeriert</numerusform>
            <numerusform>%Ln Dateien nummeriert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln files numbered</source>
        <translation>
            <numerusform>%1 von %Ln Datei nummeriert</numerusform>
            <numerusform>%1 von %Ln Dateien nummeriert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Unsupported tags removed from %Ln files</source>
        <translation>
            <numerusform>Nicht unterstützte Tags aus %Ln Datei entfernt</numerusform>
            <numerusform>Nicht unterstützte Tags aus %Ln Dateien entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Unsupported tags removed from %1 of %Ln files</source>
        <translation>
            <numerusform>Nicht unterstützte Tags aus %1 von %Ln Datei entfernt</numerusform>
            <numerusform>Nicht unterstützte Tags aus %1 von %Ln Dateien entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Tags removed from %Ln files</source>
        <translation>
            <numerusform>Tags aus %Ln Datei entfernt</numerusform>
            <numerusform>Tags aus %Ln Dateien entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Tags removed from %1 of %Ln files</source>
        <translation>
            <numerusform>Tags aus %1 von %Ln Datei entfernt</numerusform>
            <numerusform>Tags aus %1 von %Ln Dateien entfernt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art set in %Ln files</source>
        <translation>
            <numerusform>Cover in %Ln Datei gesetzt</numerusform>
            <numerusform>Cover in %Ln Dateien gesetzt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art set in %1 of %Ln files</source>
        <translation>
            <numerusform>Cover in %1 von %Ln Datei gesetzt</numerusform>
            <numerusform>Cover in %1 von %Ln Dateien gesetzt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art deleted in %Ln files</source>
        <translation>
            <numerusform>Cover in %Ln Datei gelöscht</numerusform>
            <numerusform>Cover in %Ln Dateien gelöscht</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art deleted in %1 of %Ln files</source>
        <translation>
            <numerusform>Cover in %1 von %Ln Datei gelöscht</numerusform>
            <numerusform>Cover in %1 von %Ln Dateien gelöscht</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DropFolder</name>
    <message>
        <source>There is no folder to receive files in</source>
        <translation>Es gibt keinen Ordner, der die Dateien aufnehmen kann</translation>
    </message>
</context>
<context>
    <name>DropView</name>
    <message>
        <source>Cover art</source>
        <translation>Cover</translation>
    </message>
    <message>
        <source>No Artwork</source>
        <translation>Kein Cover</translation>
    </message>
</context>
<context>
    <name>DroppedData</name>
    <message>
        <source>Dropped file</source>
        <translation>Abgelegte Datei</translation>
    </message>
</context>
<context>
    <name>EditorPane</name>
    <message>
        <source>T&amp;itle</source>
        <translation>T&amp;itel</translation>
    </message>
    <message>
        <source>&amp;Artist</source>
        <translation>&amp;Künstler</translation>
    </message>
    <message>
        <source>A&amp;lbum</source>
        <translation>A&amp;lbum</translation>
    </message>
    <message>
        <source>Al&amp;bum Artist</source>
        <translation>Albu&amp;mkünstler</translation>
    </message>
    <message>
        <source>&amp;Year</source>
        <translation>&amp;Jahr</translation>
    </message>
    <message>
        <source>Trac&amp;k</source>
        <translation>T&amp;rack</translation>
    </message>
    <message>
        <source>Track total</source>
        <translation>Anzahl der Tracks</translation>
    </message>
    <message>
        <source>&amp;Disc</source>
        <translation>Di&amp;sc</translation>
    </message>
    <message>
        <source>Disc total</source>
        <translation>Anzahl der Discs</translation>
    </message>
    <message>
        <source>&amp;Comment</source>
        <translation>K&amp;ommentar</translation>
    </message>
    <message>
        <source>&amp;Genre</source>
        <translation>&amp;Genre</translation>
    </message>
    <message>
        <source>of</source>
        <comment>between a number and the total</comment>
        <translation>von</translation>
    </message>
    <message>
        <source>C&amp;ompilation</source>
        <translation>Kom&amp;pilation</translation>
    </message>
</context>
<context>
    <name>EmptyListHint</name>
    <message>
        <source>Drop MP3 or M4A files or folders here</source>
        <translation>MP3- oder M4A-Dateien oder Ordner hier ablegen</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Öffnen&#xa0;…</translation>
    </message>
    <message>
        <source>Open music files</source>
        <translation>Musikdateien öffnen</translation>
    </message>
</context>
<context>
    <name>FailureLog</name>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Restored beside it as %1</source>
        <translation>Daneben wiederhergestellt als %1</translation>
    </message>
    <message>
        <source>No copy could be restored</source>
        <translation>Es konnte keine Kopie wiederhergestellt werden</translation>
    </message>
    <message>
        <source>The interrupted change is forgotten; the file stays as it is</source>
        <translation>Die unterbrochene Änderung ist vergessen; die Datei bleibt, wie sie ist</translation>
    </message>
    <message>
        <source>The interrupted change could not be forgotten</source>
        <translation>Die unterbrochene Änderung konnte nicht vergessen werden</translation>
    </message>
    <message>
        <source>The interrupted change has been taken back, or forgotten elsewhere</source>
        <translation>Die unterbrochene Änderung wurde inzwischen zurückgenommen oder anderswo vergessen</translation>
    </message>
</context>
<context>
    <name>FailureReason</name>
    <message>
        <source>Cover art is kept in MP3 and M4A files that are named so</source>
        <translation>Cover werden nur in MP3- und M4A-Dateien mit der passenden Endung gespeichert</translation>
    </message>
    <message>
        <source>Only MP3 files can have chapters</source>
        <translation>Nur MP3-Dateien können Kapitel enthalten</translation>
    </message>
    <message>
        <source>This is no sound file of a known kind</source>
        <translation>Dies ist keine Audiodatei eines bekannten Formats</translation>
    </message>
    <message>
        <source>The file has no tag</source>
        <translation>Die Datei enthält kein Tag</translation>
    </message>
    <message>
        <source>The text is not valid Unicode</source>
        <translation>Der Text ist kein gültiges Unicode</translation>
    </message>
    <message>
        <source>Another program is changing the file</source>
        <translation>Ein anderes Programm ändert die Datei gerade</translation>
    </message>
    <message>
        <source>The structure of the file is damaged</source>
        <translation>Die Struktur der Datei ist beschädigt</translation>
    </message>
    <message>
        <source>The file is named like MP3, but holds MP4</source>
        <translation>Die Datei heißt wie eine MP3-Datei, enthält aber MP4</translation>
    </message>
    <message>
        <source>An interrupted change of the file could not be taken back</source>
        <translation>Eine unterbrochene Änderung der Datei konnte nicht zurückgenommen werden</translation>
    </message>
    <message>
        <source>This is no file</source>
        <translation>Dies ist keine Datei</translation>
    </message>
    <message>
        <source>Tags of the version ID3v2.2 have no chapters</source>
        <translation>Tags der Version ID3v2.2 haben keine Kapitel</translation>
    </message>
    <message>
        <source>The tags of this file can&apos;t hold that</source>
        <translation>Die Tags dieser Datei können das nicht aufnehmen</translation>
    </message>
    <message>
        <source>The tag is built in a way that Sonvika can&apos;t change without damage</source>
        <translation>Das Tag ist so aufgebaut, dass Sonvika es nicht ohne Schaden ändern kann</translation>
    </message>
    <message>
        <source>A tag claims to be longer than it is, and sound may lie in what it claims</source>
        <translation>Ein Tag gibt sich für länger aus, als es ist, und was es beansprucht, könnte Ton sein</translation>
    </message>
    <message>
        <source>The file could not tell any more where its sound lies</source>
        <translation>Die Datei könnte nicht mehr angeben, wo ihr Ton liegt</translation>
    </message>
    <message>
        <source>Another program has locked the file</source>
        <translation>Ein anderes Programm hat die Datei gesperrt</translation>
    </message>
    <message>
        <source>Reading the tags of this file would take too much memory or time</source>
        <translation>Die Tags dieser Datei zu lesen würde zu viel Speicher oder Zeit kosten</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>MP3 and M4A files</source>
        <translation>MP3- und M4A-Dateien</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Bilder</translation>
    </message>
</context>
<context>
    <name>FileFormatController</name>
    <message>
        <source>Rename Files</source>
        <translation>Dateien umbenennen</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>Fields</source>
        <translation>Felder</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>Umbenennungen</translation>
    </message>
    <message>
        <source>&amp;Show only these</source>
        <translation>Nur &amp;diese anzeigen</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message numerus="yes">
        <source>%Ln files will be renamed</source>
        <translation>
            <numerusform>%Ln Datei wird umbenannt</numerusform>
            <numerusform>%Ln Dateien werden umbenannt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln unchanged</source>
        <comment>%1 tells how many files will be renamed</comment>
        <translation>
            <numerusform>%1, %Ln unverändert</numerusform>
            <numerusform>%1, %Ln unverändert</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln can&apos;t be</source>
        <comment>%1 tells how many files will be renamed</comment>
        <translation>
            <numerusform>%1, bei %Ln nicht möglich</numerusform>
            <numerusform>%1, bei %Ln nicht möglich</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Standard</translation>
    </message>
    <message>
        <source>Bring the first format back</source>
        <translation>Das ursprüngliche Format wiederherstellen</translation>
    </message>
</context>
<context>
    <name>FileNameFormat</name>
    <message>
        <source>Track</source>
        <translation>Track</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Album Artist</source>
        <translation>Albumkünstler</translation>
    </message>
    <message>
        <source>Disc</source>
        <translation>Disc</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
</context>
<context>
    <name>GeneralViewController</name>
    <message>
        <source>Show &amp;notifications</source>
        <translation>&amp;Benachrichtigungen anzeigen</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Format of saved album art</source>
        <translation>Format gespeicherter Cover</translation>
    </message>
    <message>
        <source>Failures:</source>
        <translation>Fehler:</translation>
    </message>
    <message>
        <source>When a file can&apos;t be read, changed or renamed.</source>
        <translation>Wenn eine Datei nicht gelesen, geändert oder umbenannt werden kann.</translation>
    </message>
    <message>
        <source>Save album art &amp;as:</source>
        <translation>&amp;Cover speichern als:</translation>
    </message>
    <message>
        <source>Also used for album art dragged to other programs.</source>
        <translation>Gilt auch für Cover, die in andere Programme gezogen werden.</translation>
    </message>
</context>
<context>
    <name>ImageFile</name>
    <message>
        <source>The picture is larger than 64 MB</source>
        <translation>Das Bild ist größer als 64&#xa0;MB</translation>
    </message>
    <message>
        <source>There is no picture in a known format</source>
        <translation>Es ist kein Bild in einem bekannten Format vorhanden</translation>
    </message>
    <message>
        <source>This is no file</source>
        <translation>Dies ist keine Datei</translation>
    </message>
    <message>
        <source>The name is not valid UTF-8</source>
        <translation>Der Name ist kein gültiges UTF-8</translation>
    </message>
</context>
<context>
    <name>InterruptedChange</name>
    <message>
        <source>The file is not there</source>
        <translation>Die Datei ist nicht da</translation>
    </message>
    <message>
        <source>The file lies on a different volume now</source>
        <translation>Die Datei liegt jetzt auf einem anderen Datenträger</translation>
    </message>
    <message>
        <source>The file has been changed since</source>
        <translation>Die Datei wurde seitdem verändert</translation>
    </message>
    <message>
        <source>The file could not be read and written</source>
        <translation>Die Datei konnte nicht gelesen und geschrieben werden</translation>
    </message>
    <message>
        <source>Another program has locked the file</source>
        <translation>Ein anderes Programm hat die Datei gesperrt</translation>
    </message>
</context>
<context>
    <name>ListDrops</name>
    <message>
        <source>The source did not deliver it</source>
        <translation>Die Quelle hat sie nicht geliefert</translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>Open Re&amp;cent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>No Recent Files</source>
        <translation>Keine zuletzt geöffneten Dateien</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Tags</source>
        <translation>&amp;Tags</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Spalten</translation>
    </message>
    <message>
        <source>&amp;Sort By</source>
        <translation>S&amp;ortieren nach</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>Mi&amp;nimise</source>
        <translation>Mi&amp;nimieren</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>&amp;Bring to Front</source>
        <translation>In den Vorder&amp;grund holen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Support Page</source>
        <translation>&amp;Support-Seite</translation>
    </message>
    <message>
        <source>Send &amp;Feedback…</source>
        <translation>&amp;Rückmeldung senden&#xa0;…</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Sonvika</source>
        <translation>Sonvika</translation>
    </message>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
</context>
<context>
    <name>Messages</name>
    <message>
        <source>File already open</source>
        <translation>Datei ist bereits geöffnet</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file at path: %@</source>
        <translation>Datei konnte nicht geöffnet werden: %@</translation>
    </message>
    <message>
        <source>Unsupported file type</source>
        <translation>Nicht unterstützter Dateityp</translation>
    </message>
    <message>
        <source>File is not writable, please fix permissions</source>
        <translation>Datei ist schreibgeschützt, bitte die Zugriffsrechte anpassen</translation>
    </message>
    <message>
        <source>Unable to update tags for: %@</source>
        <translation>Tags konnten nicht geändert werden: %@</translation>
    </message>
    <message>
        <source>Unable to load image data: %@</source>
        <translation>Bild konnte nicht geladen werden: %@</translation>
    </message>
    <message>
        <source>Unable to save album art</source>
        <translation>Cover konnte nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Failed to save to image. url: %@</source>
        <translation>Bild konnte nicht gespeichert werden. Adresse: %@</translation>
    </message>
    <message>
        <source>Unable to remove all tags</source>
        <translation>Tags konnten nicht alle entfernt werden</translation>
    </message>
    <message>
        <source>Unable to remove album art</source>
        <translation>Cover konnte nicht entfernt werden</translation>
    </message>
    <message>
        <source>Unable to remove unsupported tags</source>
        <translation>Nicht unterstützte Tags konnten nicht entfernt werden</translation>
    </message>
    <message>
        <source>Couldn&apos;t recieve audiofile drop: %@</source>
        <translation>Abgelegte Audiodatei konnte nicht übernommen werden: %@</translation>
    </message>
    <message>
        <source>Couldn&apos;t rename file at path: %@, with error: %@</source>
        <translation>Datei konnte nicht umbenannt werden: %@, Fehler: %@</translation>
    </message>
    <message>
        <source>Sonvika</source>
        <translation>Sonvika</translation>
    </message>
    <message numerus="yes">
        <source>%Ln files are no longer in the list, so their album art stays as it is</source>
        <translation>
            <numerusform>%Ln Datei steht nicht mehr in der Liste, ihr Cover bleibt, wie es ist</numerusform>
            <numerusform>%Ln Dateien stehen nicht mehr in der Liste, ihre Cover bleiben, wie sie sind</numerusform>
        </translation>
    </message>
    <message>
        <source>An interrupted change could not be taken back</source>
        <translation>Unterbrochene Änderung nicht zurückgenommen</translation>
    </message>
</context>
<context>
    <name>MessagesWindow</name>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>&amp;Copy All</source>
        <translation>Alle &amp;kopieren</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Leeren</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Restore a Copy Beside It</source>
        <translation>Kopie &amp;daneben wiederherstellen</translation>
    </message>
    <message>
        <source>Save the file as it was before the interrupted change as a new file in the same folder</source>
        <translation>Die Datei, wie sie vor der unterbrochenen Änderung war, als neue Datei im selben Ordner speichern</translation>
    </message>
    <message>
        <source>&amp;Forget</source>
        <translation>&amp;Vergessen</translation>
    </message>
    <message>
        <source>Leave the file as it is, and forget the interrupted change</source>
        <translation>Die Datei lassen, wie sie ist, und die unterbrochene Änderung vergessen</translation>
    </message>
</context>
<context>
    <name>NameRules</name>
    <message>
        <source>The name leads out of the folder</source>
        <translation>Der Name führt aus dem Ordner hinaus</translation>
    </message>
    <message>
        <source>A tag brings a line break into the name</source>
        <translation>Ein Tag bringt einen Zeilenumbruch in den Namen</translation>
    </message>
    <message>
        <source>Begins with a dot, which hides it</source>
        <translation>Beginnt mit einem Punkt und wird dadurch versteckt</translation>
    </message>
    <message>
        <source>Goes into the folder &quot;%1&quot;; a dot in front hides it</source>
        <translation>Geht in den Ordner „%1“; durch den Punkt am Anfang versteckt</translation>
    </message>
    <message>
        <source>Goes into the folder &quot;%1&quot;</source>
        <translation>Geht in den Ordner „%1“</translation>
    </message>
</context>
<context>
    <name>OpenPanelManager</name>
    <message>
        <source>Access was not granted</source>
        <translation>Der Zugriff wurde nicht gewährt</translation>
    </message>
    <message>
        <source>The request for access was stopped</source>
        <translation>Die Zugriffsanfrage wurde beendet</translation>
    </message>
    <message>
        <source>The request for access was aborted</source>
        <translation>Die Zugriffsanfrage wurde abgebrochen</translation>
    </message>
    <message>
        <source>Access permissions required</source>
        <translation>Zugriffsrechte erforderlich</translation>
    </message>
    <message>
        <source>Please allow &apos;%@&apos; to access this file or folder to continue.</source>
        <translation>Bitte „%@“ den Zugriff auf diese Datei oder diesen Ordner erlauben, um fortzufahren.</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Erlauben</translation>
    </message>
</context>
<context>
    <name>PlaybackBar</name>
    <message>
        <source>Position</source>
        <translation>Position</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Wiedergeben</translation>
    </message>
    <message>
        <source>Pause (P)</source>
        <translation>Pause (P)</translation>
    </message>
    <message>
        <source>Play (P)</source>
        <translation>Wiedergeben (P)</translation>
    </message>
    <message>
        <source>The file is no longer there.</source>
        <translation>Die Datei ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>This file cannot be played.</source>
        <translation>Diese Datei kann nicht wiedergegeben werden.</translation>
    </message>
    <message>
        <source>There is no sound device to play on.</source>
        <translation>Es ist kein Audiogerät für die Wiedergabe vorhanden.</translation>
    </message>
    <message>
        <source>Elapsed time: %1</source>
        <translation>Verstrichene Zeit: %1</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Total time: %1</source>
        <translation>Gesamtdauer: %1</translation>
    </message>
</context>
<context>
    <name>PreferencesTabViewController</name>
    <message>
        <source>0</source>
        <comment>preferences padding</comment>
        <translation>0</translation>
    </message>
</context>
<context>
    <name>PreviewCover</name>
    <message>
        <source>Cover art</source>
        <translation>Cover</translation>
    </message>
    <message>
        <source>No Artwork</source>
        <translation>Kein Cover</translation>
    </message>
</context>
<context>
    <name>PreviewPanel</name>
    <message>
        <source>Track</source>
        <translation>Track</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
</context>
<context>
    <name>QuickLookTableView</name>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>No file matches the search</source>
        <translation>Keine Datei passt zur Suche</translation>
    </message>
</context>
<context>
    <name>RecordColumns</name>
    <message>
        <source>File Name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Künstler</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Album Artist</source>
        <translation>Albumkünstler</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Track</translation>
    </message>
    <message>
        <source>Disc</source>
        <translation>Disc</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>Compilation</source>
        <translation>Kompilation</translation>
    </message>
</context>
<context>
    <name>RenamePlan</name>
    <message>
        <source>The name is empty</source>
        <translation>Der Name ist leer</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>Die Datei ist nicht mehr da</translation>
    </message>
    <message>
        <source>&quot;/&quot; leads into a folder that does not exist</source>
        <translation>„/“ führt in einen Ordner, den es nicht gibt</translation>
    </message>
    <message>
        <source>The folder can&apos;t be written</source>
        <translation>In den Ordner kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>A character in it can&apos;t be in a name</source>
        <translation>Der Name enthält ein unerlaubtes Zeichen</translation>
    </message>
    <message>
        <source>The name is too long</source>
        <translation>Der Name ist zu lang</translation>
    </message>
    <message>
        <source>Another selected file gets this name</source>
        <translation>Eine andere ausgewählte Datei erhält diesen Namen</translation>
    </message>
    <message>
        <source>A file of this name exists</source>
        <translation>Eine Datei dieses Namens ist vorhanden</translation>
    </message>
</context>
<context>
    <name>RenamePlanModel</name>
    <message>
        <source>Stays as it is</source>
        <translation>Bleibt unverändert</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>New Name</source>
        <translation>Neuer Name</translation>
    </message>
    <message>
        <source>Remark</source>
        <translation>Bemerkung</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 gibt es schon.
Soll die Datei ersetzt werden?</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
</context>
<context>
    <name>SelectionSummary</name>
    <message>
        <source>Various</source>
        <translation>Verschiedene</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Version %1 is available</source>
        <translation>Version %1 ist verfügbar</translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln Datei</numerusform>
            <numerusform>%Ln Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln files</source>
        <comment>the files that match a search, of all</comment>
        <translation>
            <numerusform>%1 von %Ln Datei</numerusform>
            <numerusform>%1 von %Ln Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln selected</source>
        <comment>%1 tells the number of files</comment>
        <translation>
            <numerusform>%1, %Ln ausgewählt</numerusform>
            <numerusform>%1, %Ln ausgewählt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Stopped after %1 of %Ln files</source>
        <translation>
            <numerusform>Nach %1 von %Ln Datei angehalten</numerusform>
            <numerusform>Nach %1 von %Ln Dateien angehalten</numerusform>
        </translation>
    </message>
    <message>
        <source>Show what went wrong</source>
        <translation>Zeigen, was fehlgeschlagen ist</translation>
    </message>
    <message numerus="yes">
        <source>%Ln messages</source>
        <translation>
            <numerusform>%Ln Meldung</numerusform>
            <numerusform>%Ln Meldungen</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TokenButton</name>
    <message>
        <source>Adds the field to the format</source>
        <translation>Fügt das Feld in das Format ein</translation>
    </message>
    <message>
        <source>Drag it into the format, or double-click it</source>
        <translation>In das Format ziehen oder doppelklicken</translation>
    </message>
</context>
<context>
    <name>TokenField</name>
    <message>
        <source>Fields and the text between them. Alt+Left and Alt+Right move a field.</source>
        <translation>Felder und der Text dazwischen. Alt+Links und Alt+Rechts verschieben ein Feld.</translation>
    </message>
</context>
<context>
    <name>UpdatesViewController</name>
    <message>
        <source>&amp;Check for updates automatically</source>
        <translation>&amp;Automatisch nach Aktualisierungen suchen</translation>
    </message>
    <message>
        <source>Download and &amp;install automatically</source>
        <translation>Automatisch &amp;herunterladen und installieren</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Aktualisierungen</translation>
    </message>
    <message>
        <source>How often to check for updates</source>
        <translation>Wie oft nach Aktualisierungen gesucht wird</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Andere</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Täglich</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Wöchentlich</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Monatlich</translation>
    </message>
    <message>
        <source>Updates:</source>
        <translation>Aktualisierungen:</translation>
    </message>
    <message>
        <source>&amp;How often:</source>
        <translation>Häu&amp;figkeit:</translation>
    </message>
    <message>
        <source>Sonvika tells you that there is a newer version, and leaves installing it to you.</source>
        <translation>Sonvika weist auf eine neuere Version hin, installiert sie aber nicht selbst.</translation>
    </message>
    <message>
        <source>No update feed is set up on this computer, so nothing is checked until there is one.</source>
        <translation>Auf diesem Rechner ist keine Quelle für Aktualisierungen eingerichtet; bis dahin wird nicht gesucht.</translation>
    </message>
    <message>
        <source>Version %1 is available: &lt;a href=&quot;%2&quot;&gt;see what is new&lt;/a&gt;.</source>
        <translation>Version %1 ist verfügbar: &lt;a href=&quot;%2&quot;&gt;Neuerungen ansehen&lt;/a&gt;.</translation>
    </message>
</context>
<context>
    <name>ViewController</name>
    <message>
        <source>Open Music Files</source>
        <translation>Musikdateien öffnen</translation>
    </message>
</context>
<context>
    <name>WorkBar</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Stop after the file that is being worked on (Escape)</source>
        <translation>Nach der Datei anhalten, die gerade bearbeitet wird (Esc)</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Edits the tags of MP3 and M4A files.</source>
        <translation>Bearbeitet die Tags von MP3- und M4A-Dateien.</translation>
    </message>
    <message>
        <source>Use a light or dark appearance whatever the desktop prefers.</source>
        <translation>Ein helles oder dunkles Erscheinungsbild verwenden, was auch immer die Arbeitsumgebung vorgibt.</translation>
    </message>
    <message>
        <source>Select the first file, save a picture of the window, and quit.</source>
        <translation>Die erste Datei auswählen, ein Bild des Fensters speichern und beenden.</translation>
    </message>
    <message>
        <source>file</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Files and folders to open.</source>
        <translation>Zu öffnende Dateien und Ordner.</translation>
    </message>
    <message>
        <source>[file|folder …]</source>
        <translation>[Datei|Ordner …]</translation>
    </message>
</context>
</TS>
