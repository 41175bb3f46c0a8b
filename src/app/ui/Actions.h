#pragma once

#include "library/CommandValidation.h"

#include <QAction>

class ArrayController;
class ShownArt;
class ViewController;

/// The commands of the main window as actions, with their texts, shortcuts and icons, enabled while they apply.
class Actions : public QObject {
    Q_OBJECT

public:
    /// What the key Delete removes where the keyboard is.
    enum class DeleteTarget { Text, Rows, Art };

    Actions(ViewController& controller, ArrayController& list, const ShownArt& art);

    QAction* open;
    QAction* openFolder;
    QAction* showInFinder;
    QAction* rename;
    QAction* remove;
    QAction* selectAll;
    QAction* deselectAll;
    /// Removes the selected rows or their art, as the key would; off while that is a text field's.
    QAction* erase;
    QAction* moveUp;
    QAction* moveDown;
    /// Not connected: finding is the window's.
    QAction* find;
    QAction* quickLook;
    QAction* numberTracks;
    QAction* updateImage;
    QAction* saveImage;
    QAction* copyImage;
    QAction* pasteImage;
    QAction* deleteImage;
    QAction* removeUnsupportedTags;
    QAction* removeAllTags;
    QAction* preferences;
    QAction* about;

    /// The commands on cover art, in the order in which menus show them.
    QList<QAction*> artCommands() const;

    /// The commands on the selected rows, for the list's context menu; null stands for a separator.
    QList<QAction*> rowCommands() const;

    /// A menu of other commands that change what is listed, or its order: off while those here are locked.
    void lockToo(QWidget& menu) { lockedToo_.append(&menu); }

    void setDeleteTarget(DeleteTarget target);
    void setPreviewShown(bool shown);
    /// While the files are being renamed, no action can be called that changes the list, the selection or a tag.
    void setLocked(bool locked);
    /// While the program works on many files, no action can be called, from wherever.
    void setWorking(bool working);
    /// Enables and titles the actions as they apply now.
    void update();

private:
    using Command = void (ViewController::*)();

    QAction* make(int tag, const QString& text, const QKeySequence& shortcut, Command command);
    /// An action whose shortcut counts only inside the widget that the action is added to.
    QAction* makeLocal(int tag, const QString& text, const QKeySequence& shortcut, Command command);
    void decorate();
    bool isApplicable(const QAction& action, const CommandValidation::State& state) const;

    ViewController& controller_;
    ArrayController& list_;
    const ShownArt& art_;
    bool previewShown_ = false;
    bool isWorking_ = false;
    bool isLocked_ = false;
    DeleteTarget deleteTarget_ = DeleteTarget::Text;
    QList<QWidget*> lockedToo_;
};
