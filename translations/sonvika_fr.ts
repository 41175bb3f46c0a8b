<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en_GB">
<context>
    <name>AboutViewController</name>
    <message>
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message>
        <source>Credits</source>
        <translation>Crédits</translation>
    </message>
    <message>
        <source>Sonvika</source>
        <translation>Sonvika</translation>
    </message>
    <message>
        <source>&amp;Web Site</source>
        <translation>Site &amp;web</translation>
    </message>
    <message>
        <source>&amp;Social</source>
        <translation>&amp;Réseaux sociaux</translation>
    </message>
    <message>
        <source>An editor for the tags of MP3 and M4A files.</source>
        <translation>Un éditeur d’étiquettes pour les fichiers MP3 et M4A.</translation>
    </message>
    <message>
        <source>Made with TagLib, Qt, GIFLIB, libimagequant, xxHash and zlib.</source>
        <translation>Réalisé avec TagLib, Qt, GIFLIB, libimagequant, xxHash et zlib.</translation>
    </message>
    <message>
        <source>Thanks to all who make them, and who make them free.</source>
        <translation>Merci à tous ceux qui les développent et les rendent libres.</translation>
    </message>
    <message>
        <source>Sonvika is free software: you may use, share and change it under the GNU General Public License, version&amp;nbsp;3. It comes without any warranty.</source>
        <translation>Sonvika est un logiciel libre&#xa0;: son utilisation, son partage et sa modification sont permis selon les termes de la GNU General Public License, version&amp;nbsp;3. Il est fourni sans aucune garantie.</translation>
    </message>
</context>
<context>
    <name>Actions</name>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Ouvrir…</translation>
    </message>
    <message>
        <source>Open &amp;Folder…</source>
        <translation>Ouvrir un &amp;dossier…</translation>
    </message>
    <message>
        <source>Sho&amp;w in File Manager</source>
        <translation>Afficher dans le &amp;gestionnaire de fichiers</translation>
    </message>
    <message>
        <source>Rena&amp;me…</source>
        <translation>Re&amp;nommer…</translation>
    </message>
    <message>
        <source>&amp;Remove from List</source>
        <translation>Retirer de la &amp;liste</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Tout sélectionner</translation>
    </message>
    <message>
        <source>&amp;Deselect All</source>
        <translation>Tout &amp;désélectionner</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Déplacer vers le &amp;haut</translation>
    </message>
    <message>
        <source>Move Do&amp;wn</source>
        <translation>Déplacer vers le &amp;bas</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Rechercher</translation>
    </message>
    <message>
        <source>&amp;Number Tracks</source>
        <translation>N&amp;uméroter les pistes</translation>
    </message>
    <message>
        <source>&amp;Save Album Art…</source>
        <translation>&amp;Enregistrer la pochette…</translation>
    </message>
    <message>
        <source>&amp;Copy Album Art</source>
        <translation>&amp;Copier la pochette</translation>
    </message>
    <message>
        <source>&amp;Paste Album Art</source>
        <translation>C&amp;oller la pochette</translation>
    </message>
    <message>
        <source>&amp;Delete Album Art</source>
        <translation>&amp;Supprimer la pochette</translation>
    </message>
    <message>
        <source>&amp;Preferences…</source>
        <translation>&amp;Préférences…</translation>
    </message>
    <message>
        <source>&amp;About Sonvika</source>
        <translation>À &amp;propos de Sonvika</translation>
    </message>
    <message>
        <source>Add files to the list</source>
        <translation>Ajouter des fichiers à la liste</translation>
    </message>
    <message>
        <source>Rename the selected files from their tags</source>
        <translation>Renommer les fichiers sélectionnés d’après leurs étiquettes</translation>
    </message>
    <message>
        <source>Look at the selected file and listen to it</source>
        <translation>Voir et écouter le fichier sélectionné</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
    <message>
        <source>Remove the selected files from the list; the files stay on disk</source>
        <translation>Retirer les fichiers sélectionnés de la liste&#xa0;; ils restent sur le disque</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Remove Unsupported Tags</source>
        <translation>Supprimer les étiquettes non prises en charge</translation>
    </message>
    <message>
        <source>Remove All Tags</source>
        <translation>Supprimer toutes les étiquettes</translation>
    </message>
    <message>
        <source>De&amp;lete</source>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>De&amp;lete Album Art</source>
        <translation>&amp;Supprimer la pochette</translation>
    </message>
</context>
<context>
    <name>AlbumArtView</name>
    <message>
        <source>%1 × %2 pixels, %3, %4</source>
        <translation>%1 × %2 pixels, %3, %4</translation>
    </message>
    <message>
        <source>Can&apos;t be shown
%1</source>
        <comment>%1 tells the size and the format</comment>
        <translation>Impossible à afficher
%1</translation>
    </message>
</context>
<context>
    <name>ArtworkCommands</name>
    <message>
        <source>Change Image</source>
        <translation>Changer l’image</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Enregistrer l’image</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>The picture can&apos;t be decoded or converted</source>
        <translation>L’image ne peut pas être décodée ou convertie</translation>
    </message>
</context>
<context>
    <name>CommandValidation</name>
    <message>
        <source>Replace Album Art</source>
        <translation>Remplacer la pochette</translation>
    </message>
    <message>
        <source>Add Album Art</source>
        <translation>Ajouter une pochette</translation>
    </message>
    <message>
        <source>Close Quick Look</source>
        <translation>Fermer l’aperçu</translation>
    </message>
    <message>
        <source>Quick Look</source>
        <translation>Aperçu</translation>
    </message>
</context>
<context>
    <name>Deed</name>
    <message numerus="yes">
        <source>%Ln files numbered</source>
        <translation>
            <numerusform>%Ln fichier numéroté</numerusform>
            <numerusform>%Ln fichiers numérotés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln files numbered</source>
        <translation>
            <numerusform>%1 sur %Ln fichier numéroté</numerusform>
            <numerusform>%1 sur %Ln fichiers numérotés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Unsupported tags removed from %Ln files</source>
        <translation>
            <numerusform>Étiquettes non prises en charge supprimées dans %Ln fichier</numerusform>
            <numerusform>Étiquettes non prises en charge supprimées dans %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Unsupported tags removed from %1 of %Ln files</source>
        <translation>
            <numerusform>Étiquettes non prises en charge supprimées dans %1 sur %Ln fichier</numerusform>
            <numerusform>Étiquettes non prises en charge supprimées dans %1 sur %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Tags removed from %Ln files</source>
        <translation>
            <numerusform>Étiquettes supprimées dans %Ln fichier</numerusform>
            <numerusform>Étiquettes supprimées dans %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Tags removed from %1 of %Ln files</source>
        <translation>
            <numerusform>Étiquettes supprimées dans %1 sur %Ln fichier</numerusform>
            <numerusform>Étiquettes supprimées dans %1 sur %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art set in %Ln files</source>
        <translation>
            <numerusform>Pochette enregistrée dans %Ln fichier</numerusform>
            <numerusform>Pochette enregistrée dans %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art set in %1 of %Ln files</source>
        <translation>
            <numerusform>Pochette enregistrée dans %1 sur %Ln fichier</numerusform>
            <numerusform>Pochette enregistrée dans %1 sur %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art deleted in %Ln files</source>
        <translation>
            <numerusform>Pochette supprimée dans %Ln fichier</numerusform>
            <numerusform>Pochette supprimée dans %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Album art deleted in %1 of %Ln files</source>
        <translation>
            <numerusform>Pochette supprimée dans %1 sur %Ln fichier</numerusform>
            <numerusform>Pochette supprimée dans %1 sur %Ln fichiers</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DropFolder</name>
    <message>
        <source>There is no folder to receive files in</source>
        <translation>Aucun dossier ne peut recevoir les fichiers</translation>
    </message>
</context>
<context>
    <name>DropView</name>
    <message>
        <source>Cover art</source>
        <translation>Pochette</translation>
    </message>
    <message>
        <source>No Artwork</source>
        <translation>Aucune pochette</translation>
    </message>
</context>
<context>
    <name>DroppedData</name>
    <message>
        <source>Dropped file</source>
        <translation>Fichier déposé</translation>
    </message>
</context>
<context>
    <name>EditorPane</name>
    <message>
        <source>T&amp;itle</source>
        <translation>Tit&amp;re</translation>
    </message>
    <message>
        <source>&amp;Artist</source>
        <translation>Arti&amp;ste</translation>
    </message>
    <message>
        <source>A&amp;lbum</source>
        <translation>Al&amp;bum</translation>
    </message>
    <message>
        <source>Al&amp;bum Artist</source>
        <translation>Artiste de l’a&amp;lbum</translation>
    </message>
    <message>
        <source>&amp;Year</source>
        <translation>Anné&amp;e</translation>
    </message>
    <message>
        <source>Trac&amp;k</source>
        <translation>&amp;Piste</translation>
    </message>
    <message>
        <source>Track total</source>
        <translation>Nombre de pistes</translation>
    </message>
    <message>
        <source>&amp;Disc</source>
        <translation>Dis&amp;que</translation>
    </message>
    <message>
        <source>Disc total</source>
        <translation>Nombre de disques</translation>
    </message>
    <message>
        <source>&amp;Comment</source>
        <translation>&amp;Commentaire</translation>
    </message>
    <message>
        <source>&amp;Genre</source>
        <translation>&amp;Genre</translation>
    </message>
    <message>
        <source>of</source>
        <comment>between a number and the total</comment>
        <translation>sur</translation>
    </message>
    <message>
        <source>C&amp;ompilation</source>
        <translation>C&amp;ompilation</translation>
    </message>
</context>
<context>
    <name>EmptyListHint</name>
    <message>
        <source>Drop MP3 or M4A files or folders here</source>
        <translation>Déposer ici des fichiers MP3 ou M4A ou des dossiers</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Ouvrir…</translation>
    </message>
    <message>
        <source>Open music files</source>
        <translation>Ouvrir des fichiers musicaux</translation>
    </message>
</context>
<context>
    <name>FailureLog</name>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Restored beside it as %1</source>
        <translation>Restauré à côté sous le nom %1</translation>
    </message>
    <message>
        <source>No copy could be restored</source>
        <translation>Aucune copie n’a pu être restaurée</translation>
    </message>
    <message>
        <source>The interrupted change is forgotten; the file stays as it is</source>
        <translation>La modification interrompue est oubliée&#xa0;; le fichier reste tel quel</translation>
    </message>
    <message>
        <source>The interrupted change could not be forgotten</source>
        <translation>La modification interrompue n’a pas pu être oubliée</translation>
    </message>
    <message>
        <source>The interrupted change has been taken back, or forgotten elsewhere</source>
        <translation>La modification interrompue a été annulée entre-temps, ou oubliée ailleurs</translation>
    </message>
</context>
<context>
    <name>FailureReason</name>
    <message>
        <source>Cover art is kept in MP3 and M4A files that are named so</source>
        <translation>Les pochettes ne sont enregistrées que dans les fichiers MP3 et M4A qui portent cette extension</translation>
    </message>
    <message>
        <source>Only MP3 files can have chapters</source>
        <translation>Seuls les fichiers MP3 peuvent contenir des chapitres</translation>
    </message>
    <message>
        <source>This is no sound file of a known kind</source>
        <translation>Ce n’est pas un fichier audio d’un format connu</translation>
    </message>
    <message>
        <source>The file has no tag</source>
        <translation>Le fichier ne contient aucune étiquette</translation>
    </message>
    <message>
        <source>The text is not valid Unicode</source>
        <translation>Le texte n’est pas de l’Unicode valide</translation>
    </message>
    <message>
        <source>Another program is changing the file</source>
        <translation>Un autre programme est en train de modifier le fichier</translation>
    </message>
    <message>
        <source>The structure of the file is damaged</source>
        <translation>La structure du fichier est endommagée</translation>
    </message>
    <message>
        <source>The file is named like MP3, but holds MP4</source>
        <translation>Le fichier porte l’extension MP3, mais contient du MP4</translation>
    </message>
    <message>
        <source>An interrupted change of the file could not be taken back</source>
        <translation>Une modification interrompue du fichier n’a pas pu être annulée</translation>
    </message>
    <message>
        <source>This is no file</source>
        <translation>Ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>Tags of the version ID3v2.2 have no chapters</source>
        <translation>Les tags de la version ID3v2.2 n’ont pas de chapitres</translation>
    </message>
    <message>
        <source>The tags of this file can&apos;t hold that</source>
        <translation>Les tags de ce fichier ne peuvent pas contenir cela</translation>
    </message>
    <message>
        <source>The tag is built in a way that Sonvika can&apos;t change without damage</source>
        <translation>Le tag est construit d’une façon que Sonvika ne peut pas modifier sans dommage</translation>
    </message>
    <message>
        <source>A tag claims to be longer than it is, and sound may lie in what it claims</source>
        <translation>Un tag se dit plus long qu’il n’est, et ce qu’il revendique pourrait être du son</translation>
    </message>
    <message>
        <source>The file could not tell any more where its sound lies</source>
        <translation>Le fichier ne pourrait plus indiquer où se trouve son son</translation>
    </message>
    <message>
        <source>Another program has locked the file</source>
        <translation>Un autre programme a verrouillé le fichier</translation>
    </message>
    <message>
        <source>Reading the tags of this file would take too much memory or time</source>
        <translation>Lire les tags de ce fichier prendrait trop de mémoire ou de temps</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>MP3 and M4A files</source>
        <translation>Fichiers MP3 et M4A</translation>
    </message>
    <message>
        <source>Images</source>
        <translation>Images</translation>
    </message>
</context>
<context>
    <name>FileFormatController</name>
    <message>
        <source>Rename Files</source>
        <translation>Renommer les fichiers</translation>
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
        <translation>Champs</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>Fichiers à renommer</translation>
    </message>
    <message>
        <source>&amp;Show only these</source>
        <translation>&amp;Montrer seulement ceux-ci</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Renommer</translation>
    </message>
    <message numerus="yes">
        <source>%Ln files will be renamed</source>
        <translation>
            <numerusform>%Ln fichier sera renommé</numerusform>
            <numerusform>%Ln fichiers seront renommés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln unchanged</source>
        <comment>%1 tells how many files will be renamed</comment>
        <translation>
            <numerusform>%1, %Ln inchangé</numerusform>
            <numerusform>%1, %Ln inchangés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln can&apos;t be</source>
        <comment>%1 tells how many files will be renamed</comment>
        <translation>
            <numerusform>%1, impossible pour %Ln</numerusform>
            <numerusform>%1, impossible pour %Ln</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>Par &amp;défaut</translation>
    </message>
    <message>
        <source>Bring the first format back</source>
        <translation>Rétablir le format d’origine</translation>
    </message>
</context>
<context>
    <name>FileNameFormat</name>
    <message>
        <source>Track</source>
        <translation>Piste</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Année</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Artiste</translation>
    </message>
    <message>
        <source>Album Artist</source>
        <translation>Artiste de l’album</translation>
    </message>
    <message>
        <source>Disc</source>
        <translation>Disque</translation>
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
        <translation>Afficher des &amp;notifications</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Format of saved album art</source>
        <translation>Format des pochettes enregistrées</translation>
    </message>
    <message>
        <source>Failures:</source>
        <translation>Échecs&#xa0;:</translation>
    </message>
    <message>
        <source>When a file can&apos;t be read, changed or renamed.</source>
        <translation>Quand un fichier ne peut pas être lu, modifié ou renommé.</translation>
    </message>
    <message>
        <source>Save album art &amp;as:</source>
        <translation>&amp;Enregistrer les pochettes en&#xa0;:</translation>
    </message>
    <message>
        <source>Also used for album art dragged to other programs.</source>
        <translation>Vaut aussi pour les pochettes glissées vers d’autres programmes.</translation>
    </message>
</context>
<context>
    <name>ImageFile</name>
    <message>
        <source>The picture is larger than 64 MB</source>
        <translation>L’image dépasse 64&#xa0;Mo</translation>
    </message>
    <message>
        <source>There is no picture in a known format</source>
        <translation>Il n’y a aucune image dans un format connu</translation>
    </message>
    <message>
        <source>This is no file</source>
        <translation>Ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>The name is not valid UTF-8</source>
        <translation>Le nom n’est pas de l’UTF-8 valide</translation>
    </message>
</context>
<context>
    <name>InterruptedChange</name>
    <message>
        <source>The file is not there</source>
        <translation>Le fichier n’est pas là</translation>
    </message>
    <message>
        <source>The file lies on a different volume now</source>
        <translation>Le fichier se trouve maintenant sur un autre volume</translation>
    </message>
    <message>
        <source>The file has been changed since</source>
        <translation>Le fichier a été modifié depuis</translation>
    </message>
    <message>
        <source>The file could not be read and written</source>
        <translation>Le fichier n’a pas pu être lu et écrit</translation>
    </message>
    <message>
        <source>Another program has locked the file</source>
        <translation>Un autre programme a verrouillé le fichier</translation>
    </message>
</context>
<context>
    <name>ListDrops</name>
    <message>
        <source>The source did not deliver it</source>
        <translation>La source ne l’a pas fourni</translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>Open Re&amp;cent</source>
        <translation>&amp;Récemment ouverts</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>No Recent Files</source>
        <translation>Aucun fichier récent</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>&amp;Tags</source>
        <translation>É&amp;tiquettes</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>&amp;Columns</source>
        <translation>&amp;Colonnes</translation>
    </message>
    <message>
        <source>&amp;Sort By</source>
        <translation>&amp;Trier par</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>Fe&amp;nêtre</translation>
    </message>
    <message>
        <source>Mi&amp;nimise</source>
        <translation>&amp;Réduire</translation>
    </message>
    <message>
        <source>&amp;Full Screen</source>
        <translation>&amp;Plein écran</translation>
    </message>
    <message>
        <source>&amp;Bring to Front</source>
        <translation>&amp;Mettre au premier plan</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;ide</translation>
    </message>
    <message>
        <source>&amp;Support Page</source>
        <translation>Page d’&amp;assistance</translation>
    </message>
    <message>
        <source>Send &amp;Feedback…</source>
        <translation>Envoyer un &amp;commentaire…</translation>
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
        <translation>Barre d’outils</translation>
    </message>
</context>
<context>
    <name>Messages</name>
    <message>
        <source>File already open</source>
        <translation>Fichier déjà ouvert</translation>
    </message>
    <message>
        <source>Couldn&apos;t open file at path: %@</source>
        <translation>Impossible d’ouvrir le fichier&#xa0;: %@</translation>
    </message>
    <message>
        <source>Unsupported file type</source>
        <translation>Type de fichier non pris en charge</translation>
    </message>
    <message>
        <source>File is not writable, please fix permissions</source>
        <translation>Fichier non modifiable, veuillez corriger les droits d’accès</translation>
    </message>
    <message>
        <source>Unable to update tags for: %@</source>
        <translation>Impossible de modifier les étiquettes de&#xa0;: %@</translation>
    </message>
    <message>
        <source>Unable to load image data: %@</source>
        <translation>Impossible de charger l’image&#xa0;: %@</translation>
    </message>
    <message>
        <source>Unable to save album art</source>
        <translation>Impossible d’enregistrer la pochette</translation>
    </message>
    <message>
        <source>Failed to save to image. url: %@</source>
        <translation>Impossible d’enregistrer l’image. Adresse&#xa0;: %@</translation>
    </message>
    <message>
        <source>Unable to remove all tags</source>
        <translation>Impossible de supprimer toutes les étiquettes</translation>
    </message>
    <message>
        <source>Unable to remove album art</source>
        <translation>Impossible de supprimer la pochette</translation>
    </message>
    <message>
        <source>Unable to remove unsupported tags</source>
        <translation>Impossible de supprimer les étiquettes non prises en charge</translation>
    </message>
    <message>
        <source>Couldn&apos;t recieve audiofile drop: %@</source>
        <translation>Impossible de recevoir le fichier audio déposé&#xa0;: %@</translation>
    </message>
    <message>
        <source>Couldn&apos;t rename file at path: %@, with error: %@</source>
        <translation>Impossible de renommer le fichier&#xa0;: %@, erreur&#xa0;: %@</translation>
    </message>
    <message>
        <source>Sonvika</source>
        <translation>Sonvika</translation>
    </message>
    <message numerus="yes">
        <source>%Ln files are no longer in the list, so their album art stays as it is</source>
        <translation>
            <numerusform>%Ln fichier n’est plus dans la liste, sa pochette reste telle quelle</numerusform>
            <numerusform>%Ln fichiers ne sont plus dans la liste, leurs pochettes restent telles quelles</numerusform>
        </translation>
    </message>
    <message>
        <source>An interrupted change could not be taken back</source>
        <translation>Modification interrompue non annulée</translation>
    </message>
</context>
<context>
    <name>MessagesWindow</name>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>&amp;Copy All</source>
        <translation>Tout &amp;copier</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Vider</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copier</translation>
    </message>
    <message>
        <source>&amp;Restore a Copy Beside It</source>
        <translation>&amp;Restaurer une copie à côté</translation>
    </message>
    <message>
        <source>Save the file as it was before the interrupted change as a new file in the same folder</source>
        <translation>Enregistrer le fichier tel qu’il était avant la modification interrompue comme nouveau fichier dans le même dossier</translation>
    </message>
    <message>
        <source>&amp;Forget</source>
        <translation>&amp;Oublier</translation>
    </message>
    <message>
        <source>Leave the file as it is, and forget the interrupted change</source>
        <translation>Laisser le fichier tel quel et oublier la modification interrompue</translation>
    </message>
</context>
<context>
    <name>NameRules</name>
    <message>
        <source>The name leads out of the folder</source>
        <translation>Le nom mène hors du dossier</translation>
    </message>
    <message>
        <source>A tag brings a line break into the name</source>
        <translation>Une étiquette apporte un saut de ligne dans le nom</translation>
    </message>
    <message>
        <source>Begins with a dot, which hides it</source>
        <translation>Commence par un point, ce qui le masque</translation>
    </message>
    <message>
        <source>Goes into the folder &quot;%1&quot;; a dot in front hides it</source>
        <translation>Va dans le dossier «&#xa0;%1&#xa0;»&#xa0;; masqué par le point au début</translation>
    </message>
    <message>
        <source>Goes into the folder &quot;%1&quot;</source>
        <translation>Va dans le dossier «&#xa0;%1&#xa0;»</translation>
    </message>
</context>
<context>
    <name>OpenPanelManager</name>
    <message>
        <source>Access was not granted</source>
        <translation>L’accès n’a pas été accordé</translation>
    </message>
    <message>
        <source>The request for access was stopped</source>
        <translation>La demande d’accès a été arrêtée</translation>
    </message>
    <message>
        <source>The request for access was aborted</source>
        <translation>La demande d’accès a été abandonnée</translation>
    </message>
    <message>
        <source>Access permissions required</source>
        <translation>Droits d’accès requis</translation>
    </message>
    <message>
        <source>Please allow &apos;%@&apos; to access this file or folder to continue.</source>
        <translation>Pour continuer, veuillez autoriser «&#xa0;%@&#xa0;» à accéder à ce fichier ou dossier.</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Autoriser</translation>
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
        <translation>Lire</translation>
    </message>
    <message>
        <source>Pause (P)</source>
        <translation>Pause (P)</translation>
    </message>
    <message>
        <source>Play (P)</source>
        <translation>Lire (P)</translation>
    </message>
    <message>
        <source>The file is no longer there.</source>
        <translation>Le fichier n’existe plus.</translation>
    </message>
    <message>
        <source>This file cannot be played.</source>
        <translation>Ce fichier ne peut pas être lu.</translation>
    </message>
    <message>
        <source>There is no sound device to play on.</source>
        <translation>Il n’y a aucun périphérique audio pour la lecture.</translation>
    </message>
    <message>
        <source>Elapsed time: %1</source>
        <translation>Temps écoulé&#xa0;: %1</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>Total time: %1</source>
        <translation>Durée totale&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>PreferencesTabViewController</name>
    <message>
        <source>0</source>
        <comment>preferences padding</comment>
        <translation>30</translation>
    </message>
</context>
<context>
    <name>PreviewCover</name>
    <message>
        <source>Cover art</source>
        <translation>Pochette</translation>
    </message>
    <message>
        <source>No Artwork</source>
        <translation>Pas de pochette</translation>
    </message>
</context>
<context>
    <name>PreviewPanel</name>
    <message>
        <source>Track</source>
        <translation>Piste</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Année</translation>
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
        <translation>Fichiers</translation>
    </message>
    <message>
        <source>No file matches the search</source>
        <translation>Aucun fichier ne correspond à la recherche</translation>
    </message>
</context>
<context>
    <name>RecordColumns</name>
    <message>
        <source>File Name</source>
        <translation>Nom du fichier</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>Titre</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>Artiste</translation>
    </message>
    <message>
        <source>Album</source>
        <translation>Album</translation>
    </message>
    <message>
        <source>Album Artist</source>
        <translation>Artiste de l’album</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Piste</translation>
    </message>
    <message>
        <source>Disc</source>
        <translation>Disque</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Année</translation>
    </message>
    <message>
        <source>Genre</source>
        <translation>Genre</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Commentaire</translation>
    </message>
    <message>
        <source>Compilation</source>
        <translation>Compilation</translation>
    </message>
</context>
<context>
    <name>RenamePlan</name>
    <message>
        <source>The name is empty</source>
        <translation>Le nom est vide</translation>
    </message>
    <message>
        <source>The file is gone</source>
        <translation>Le fichier n’existe plus</translation>
    </message>
    <message>
        <source>&quot;/&quot; leads into a folder that does not exist</source>
        <translation>«&#xa0;/&#xa0;» mène à un dossier qui n’existe pas</translation>
    </message>
    <message>
        <source>The folder can&apos;t be written</source>
        <translation>Le dossier n’est pas accessible en écriture</translation>
    </message>
    <message>
        <source>A character in it can&apos;t be in a name</source>
        <translation>Le nom contient un caractère interdit</translation>
    </message>
    <message>
        <source>The name is too long</source>
        <translation>Le nom est trop long</translation>
    </message>
    <message>
        <source>Another selected file gets this name</source>
        <translation>Un autre fichier sélectionné reçoit ce nom</translation>
    </message>
    <message>
        <source>A file of this name exists</source>
        <translation>Un fichier de ce nom existe</translation>
    </message>
</context>
<context>
    <name>RenamePlanModel</name>
    <message>
        <source>Stays as it is</source>
        <translation>Inchangé</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>Nom du fichier</translation>
    </message>
    <message>
        <source>New Name</source>
        <translation>Nouveau nom</translation>
    </message>
    <message>
        <source>Remark</source>
        <translation>Remarque</translation>
    </message>
</context>
<context>
    <name>SaveDialog</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 existe déjà.
Voulez-vous le remplacer&#xa0;?</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
</context>
<context>
    <name>SelectionSummary</name>
    <message>
        <source>Various</source>
        <translation>Divers</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Version %1 is available</source>
        <translation>La version %1 est disponible</translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln fichier</numerusform>
            <numerusform>%Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 of %Ln files</source>
        <comment>the files that match a search, of all</comment>
        <translation>
            <numerusform>%1 sur %Ln fichier</numerusform>
            <numerusform>%1 sur %Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, %Ln selected</source>
        <comment>%1 tells the number of files</comment>
        <translation>
            <numerusform>%1, %Ln sélectionné</numerusform>
            <numerusform>%1, %Ln sélectionnés</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Stopped after %1 of %Ln files</source>
        <translation>
            <numerusform>Arrêté après %1 fichier sur %Ln</numerusform>
            <numerusform>Arrêté après %1 fichiers sur %Ln</numerusform>
        </translation>
    </message>
    <message>
        <source>Show what went wrong</source>
        <translation>Afficher ce qui a échoué</translation>
    </message>
    <message numerus="yes">
        <source>%Ln messages</source>
        <translation>
            <numerusform>%Ln message</numerusform>
            <numerusform>%Ln messages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TokenButton</name>
    <message>
        <source>Adds the field to the format</source>
        <translation>Ajoute le champ au format</translation>
    </message>
    <message>
        <source>Drag it into the format, or double-click it</source>
        <translation>Glisser dans le format ou double-cliquer</translation>
    </message>
</context>
<context>
    <name>TokenField</name>
    <message>
        <source>Fields and the text between them. Alt+Left and Alt+Right move a field.</source>
        <translation>Des champs et le texte qui les sépare. Alt+Gauche et Alt+Droite déplacent un champ.</translation>
    </message>
</context>
<context>
    <name>UpdatesViewController</name>
    <message>
        <source>&amp;Check for updates automatically</source>
        <translation>&amp;Rechercher les mises à jour automatiquement</translation>
    </message>
    <message>
        <source>Download and &amp;install automatically</source>
        <translation>&amp;Télécharger et installer automatiquement</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>Mises à jour</translation>
    </message>
    <message>
        <source>How often to check for updates</source>
        <translation>Fréquence de recherche des mises à jour</translation>
    </message>
    <message>
        <source>Other</source>
        <translation>Autre</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Tous les jours</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Toutes les semaines</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Tous les mois</translation>
    </message>
    <message>
        <source>Updates:</source>
        <translation>Mises à jour&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;How often:</source>
        <translation>&amp;Fréquence&#xa0;:</translation>
    </message>
    <message>
        <source>Sonvika tells you that there is a newer version, and leaves installing it to you.</source>
        <translation>Sonvika signale les nouvelles versions, mais ne les installe pas.</translation>
    </message>
    <message>
        <source>No update feed is set up on this computer, so nothing is checked until there is one.</source>
        <translation>Aucune source de mises à jour n’est configurée sur cet ordinateur&#xa0;; d’ici là, rien n’est recherché.</translation>
    </message>
    <message>
        <source>Version %1 is available: &lt;a href=&quot;%2&quot;&gt;see what is new&lt;/a&gt;.</source>
        <translation>La version %1 est disponible&#xa0;: &lt;a href=&quot;%2&quot;&gt;voir les nouveautés&lt;/a&gt;.</translation>
    </message>
</context>
<context>
    <name>ViewController</name>
    <message>
        <source>Open Music Files</source>
        <translation>Ouvrir des fichiers musicaux</translation>
    </message>
</context>
<context>
    <name>WorkBar</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Stop after the file that is being worked on (Escape)</source>
        <translation>S’arrêter après le fichier en cours (Échap)</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Edits the tags of MP3 and M4A files.</source>
        <translation>Modifie les étiquettes des fichiers MP3 et M4A.</translation>
    </message>
    <message>
        <source>Use a light or dark appearance whatever the desktop prefers.</source>
        <translation>Utiliser une apparence claire ou sombre quelle que soit la préférence du bureau.</translation>
    </message>
    <message>
        <source>Select the first file, save a picture of the window, and quit.</source>
        <translation>Sélectionner le premier fichier, enregistrer une image de la fenêtre et quitter.</translation>
    </message>
    <message>
        <source>file</source>
        <translation>fichier</translation>
    </message>
    <message>
        <source>Files and folders to open.</source>
        <translation>Fichiers et dossiers à ouvrir.</translation>
    </message>
    <message>
        <source>[file|folder …]</source>
        <translation>[fichier|dossier …]</translation>
    </message>
</context>
</TS>
