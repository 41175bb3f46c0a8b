#include "app/ui/Actions.h"

#include "app/ViewController.h"
#include "app/ui/Icons.h"
#include "artwork/ShownArt.h"
#include "library/ArrayController.h"

Actions::Actions(ViewController& controller, ArrayController& list, const ShownArt& art)
    : controller_(controller), list_(list), art_(art)
{
    using Controller = ViewController;
    open = make(tr("&Open…"), QKeySequence::Open, &Controller::openDocument);
    openFolder = make(tr("Open &Folder…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O), &Controller::openFolder);
    showInFinder =
        make(tr("Sho&w in File Manager"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E), &Controller::showInFinder);
    rename = make(tr("Rena&me…"), QKeySequence(Qt::Key_F2), &Controller::showFormatWindow);
    remove = makeLocal(tr("&Remove from List"), QKeySequence::Delete, &Controller::removeDocuments);
    selectAll = make(tr("Select &All"), QKeySequence::SelectAll, &Controller::selectAll);
    deselectAll = make(tr("&Deselect All"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), &Controller::deselectAll);
    find = make(tr("&Find"), QKeySequence::Find, nullptr);
    numberTracks = make(tr("&Number Tracks"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N),
                        &Controller::incrementTrackNumbers);
    updateImage = make({}, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_I), &Controller::updateImage);
    saveImage = make(tr("&Save Album Art…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), &Controller::saveImage);
    copyImage = makeLocal(tr("&Copy Album Art"), QKeySequence::Copy, &Controller::copyImage);
    pasteImage = makeLocal(tr("&Paste Album Art"), QKeySequence::Paste, &Controller::pasteImage);
    deleteImage = makeLocal(tr("&Delete Album Art"), QKeySequence::Delete, &Controller::deleteImage);
    removeUnsupportedTags = make(tr("Remove &Unsupported Tags"), {}, &Controller::removeUnsupportedTags);
    removeAllTags = make(tr("&Remove All Tags"), {}, &Controller::removeAllTags);
    decorate();
    connect(&list, &ArrayController::countChanged, this, &Actions::update);
    connect(&list.selection(), &ListSelection::changed, this, &Actions::update);
    connect(&art, &ShownArt::changed, this, &Actions::update);
    update();
}

QAction* Actions::make(const QString& text, const QKeySequence& shortcut, Command command)
{
    auto* action = new QAction(text, this);
    action->setShortcut(shortcut);
    if (command)
        connect(action, &QAction::triggered, &controller_, command);
    return action;
}

QAction* Actions::makeLocal(const QString& text, const QKeySequence& shortcut, Command command)
{
    auto* action = make(text, shortcut, command);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

void Actions::decorate()
{
    open->setIcon(Icons::symbol(QStringLiteral("open")));
    open->setToolTip(tr("Add files to the list"));
    rename->setIcon(Icons::symbol(QStringLiteral("rename")));
    rename->setToolTip(tr("Rename the selected files from their tags"));
    remove->setIconText(tr("Remove"));
    remove->setIcon(Icons::symbol(QStringLiteral("remove")));
    remove->setToolTip(tr("Remove the selected files from the list; the files stay on disk"));
}

QList<QAction*> Actions::artCommands() const
{
    return {updateImage, pasteImage, copyImage, saveImage, deleteImage};
}

void Actions::update()
{
    const bool anySelected = list_.selection().hasSelection();
    const bool artShown = art_.isShown();
    for (auto* action : {remove, rename, deselectAll, showInFinder, numberTracks, updateImage, pasteImage,
                         removeUnsupportedTags, removeAllTags})
        action->setEnabled(anySelected);
    for (auto* action : {saveImage, copyImage, deleteImage})
        action->setEnabled(anySelected && artShown);
    selectAll->setEnabled(list_.rowCount() > 0);
    find->setEnabled(!list_.content().empty());
    updateImage->setText(artShown ? tr("Replace Album Art") : tr("Add Album Art"));
}
