#pragma once

#include "library/SelectionSummary.h"
#include "model/AudioFile.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <vector>

class ArrayController;
class ArtworkCommands;
class BatchCommands;
class FieldEditor;
class FileLoader;
class FilePanels;
class FileRenamer;
class ShownArt;
struct Deed;

/// The controller of the main window: every command is an operation here, forwarded to the class that does it.
/// Knows no widget; it speaks to the views by signals.
class ViewController : public QObject {
    Q_OBJECT

public:
    ViewController(ArrayController& list, FileLoader& loader, FieldEditor& editor, BatchCommands& batch,
                   ArtworkCommands& artwork, ShownArt& art, FileRenamer& renamer, FilePanels& panels);

    /// Lets the user choose audio files and adds them.
    void openDocument();
    /// Lets the user choose a folder and adds the audio files below it.
    void openFolder();
    /// Adds a file, or every audio file below a folder. @return true when every file found was added.
    bool openPath(const QString& path);
    /// The same for several paths.
    void openPaths(const QStringList& paths);
    /// Removes the selected rows from the list and selects the row that took their place. No file is touched.
    void removeDocuments();
    /// Empties the list of the shown records, as the window goes away.
    void viewDidDisappear();

    void selectAll();
    void deselectAll();
    /// Selects the single row above (-1) or below (1) the selected one; stays where there is none.
    void moveSelection(int step);

    /// Moves the selected rows together up (-1) or down (1) by one row; stays at the ends.
    void moveRows(int step);
    void moveRowsUp() { moveRows(-1); }
    void moveRowsDown() { moveRows(1); }

    /// Writes one edited field into every selected file (see FieldEditor).
    void applyEdit(const QString& key, const QString& value);
    /// Writes the compilation flag, "1", "0" or "-1" for mixed, into every selected file.
    void updateCompilationState(const QString& state);

    // Commands on the selected files; see BatchCommands and ArtworkCommands.
    void incrementTrackNumbers();
    void removeUnsupportedTags();
    void removeAllTags();
    void updateImage();
    void deleteImage();
    void saveImage();
    /// Puts the shown art on the clipboard.
    void copyImage();
    /// Sets the image on the clipboard as art; nothing when there is none.
    void pasteImage();
    void showInFinder();

    /// Wants the main window shown and in front.
    void showWindow() { emit windowWanted(); }
    /// Wants the preferences window shown.
    void showPreferences() { emit preferencesWanted(); }
    /// Wants it shown on its About pane.
    void openAbout() { emit aboutWanted(); }
    /// Wants the preview of the selected file shown, or hidden when it is shown.
    void openQuickLook() { emit quickLookWanted(); }
    /// Wants the preview hidden.
    void closeQuickLook() { emit quickLookUnwanted(); }
    /// Wants the window shown in which the file-name format is edited; nothing without a selection.
    void showFormatWindow();
    /// Renames the selected files (see FileRenamer).
    void renameFiles(const QStringList& format);
    /// Renames the files of these records, whatever is selected.
    void renameFiles(const std::vector<AudioFilePtr>& records, const QStringList& format);
    /// While locked, the list, the fields and the search field are disabled, and every command that changes what is
    /// listed or selected, or a tag.
    void setEditingLocked(bool locked) { emit editingLocked(locked); }

    /// Ends an edit in progress, so that it is written.
    void endEditing() { emit editingShouldEnd(); }
    /// Fills the editor from the selection. An edit in progress goes on while the same records are selected.
    void updateFields();
    SelectionSummary selectionSummary() const;

signals:
    /// The editor should show these values, and let them be edited unless the summary is empty.
    void fieldsChanged(const SelectionSummary& summary);
    void editingShouldEnd();
    /// A command on the selected files is done.
    void done(const Deed& deed);
    void editingLocked(bool locked);
    void formatWindowWanted();
    void windowWanted();
    void preferencesWanted();
    void aboutWanted();
    void quickLookWanted();
    void quickLookUnwanted();

private:
    /// The same without the art. @return what is shown.
    SelectionSummary showValues();
    QByteArray commonArt(const SelectionSummary& summary) const;

    ArrayController& list_;
    FileLoader& loader_;
    FieldEditor& editor_;
    BatchCommands& batch_;
    ArtworkCommands& artwork_;
    ShownArt& art_;
    FileRenamer& renamer_;
    FilePanels& panels_;
};
