#include "app/ui/Actions.h"

#include "app/ViewController.h"
#include "app/ui/Icons.h"
#include "artwork/ShownArt.h"
#include "library/ArrayController.h"

#include <QWidget>

#include <utility>

Actions::Actions(ViewController& controller, ArrayController& list, const ShownArt& art)
    : controller_(controller), list_(list), art_(art)
{
    using Controller = ViewController;
    using namespace CommandValidation;
    const auto shifted = [](Qt::Key key) { return QKeySequence(Qt::CTRL | Qt::SHIFT | key); };
    open = make(Untagged, tr("&Open…"), QKeySequence::Open, &Controller::openDocument);
    openFolder = make(Untagged, tr("Open &Folder…"), shifted(Qt::Key_O), &Controller::openFolder);
    showInFinder = make(Reveal, tr("Sho&w in File Manager"), shifted(Qt::Key_E), &Controller::showInFinder);
    rename = make(Rename, tr("Rena&me…"), QKeySequence(Qt::Key_F2), &Controller::showFormatWindow);
    remove = makeLocal(Remove, tr("&Remove from List"), {}, &Controller::removeDocuments);
    selectAll = make(Anytime, tr("Select &All"), QKeySequence::SelectAll, &Controller::selectAll);
    deselectAll = make(Anytime, tr("&Deselect All"), shifted(Qt::Key_A), &Controller::deselectAll);
    // No widget has it: the key is that of the command which it stands for.
    erase = makeLocal(Remove, {}, QKeySequence::Delete, nullptr);
    connect(erase, &QAction::triggered, this,
            [this] { (deleteTarget_ == DeleteTarget::Art ? deleteImage : remove)->trigger(); });
    moveUp = makeLocal(EditTags, tr("Move &Up"), QKeySequence(Qt::ALT | Qt::Key_Up), &Controller::moveRowsUp);
    moveDown = makeLocal(EditTags, tr("Move Do&wn"), QKeySequence(Qt::ALT | Qt::Key_Down), &Controller::moveRowsDown);
    find = make(Anytime, tr("&Find"), QKeySequence::Find, nullptr);
    quickLook = make(QuickLook, {}, {}, nullptr);
    connect(quickLook, &QAction::triggered, &controller,
            [this] { previewShown_ ? controller_.closeQuickLook() : controller_.openQuickLook(); });
    numberTracks = make(EditTags, tr("&Number Tracks"), shifted(Qt::Key_N), &Controller::incrementTrackNumbers);
    updateImage = make(UpdateImage, {}, shifted(Qt::Key_I), &Controller::updateImage);
    saveImage = make(SaveImage, tr("&Save Album Art…"), shifted(Qt::Key_S), &Controller::saveImage);
    copyImage = makeLocal(SaveImage, tr("&Copy Album Art"), QKeySequence::Copy, &Controller::copyImage);
    pasteImage = makeLocal(EditTags, tr("&Paste Album Art"), QKeySequence::Paste, &Controller::pasteImage);
    deleteImage = makeLocal(DeleteImage, tr("&Delete Album Art"), {}, &Controller::deleteImage);
    // Without mnemonics: two letters would strip every selected file.
    removeUnsupportedTags = make(Strip, tr("Remove Unsupported Tags"), {}, &Controller::removeUnsupportedTags);
    removeAllTags = make(Strip, tr("Remove All Tags"), {}, &Controller::removeAllTags);
    preferences =
        make(Untagged, tr("&Preferences…"), QKeySequence(Qt::CTRL | Qt::Key_Comma), &Controller::showPreferences);
    preferences->setMenuRole(QAction::PreferencesRole);
    about = make(Untagged, tr("&About Sonvika"), {}, &Controller::openAbout);
    about->setMenuRole(QAction::AboutRole);
    decorate();
    connect(&list, &ArrayController::countChanged, this, &Actions::update);
    connect(&list.selection(), &ListSelection::changed, this, &Actions::update);
    connect(&art, &ShownArt::changed, this, &Actions::update);
    setDeleteTarget(DeleteTarget::Text);
}

QAction* Actions::make(int tag, const QString& text, const QKeySequence& shortcut, Command command)
{
    auto* action = new QAction(text, this);
    action->setData(tag);
    action->setShortcut(shortcut);
    if (command)
        connect(action, &QAction::triggered, &controller_, command);
    return action;
}

QAction* Actions::makeLocal(int tag, const QString& text, const QKeySequence& shortcut, Command command)
{
    auto* action = make(tag, text, shortcut, command);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

void Actions::decorate()
{
    open->setIcon(Icons::symbol(QStringLiteral("open")));
    open->setToolTip(tr("Add files to the list"));
    rename->setIcon(Icons::symbol(QStringLiteral("rename")));
    rename->setToolTip(tr("Rename the selected files from their tags"));
    quickLook->setIcon(Icons::symbol(QStringLiteral("preview")));
    quickLook->setToolTip(tr("Look at the selected file and listen to it"));
    remove->setIconText(tr("Remove"));
    remove->setIcon(Icons::symbol(QStringLiteral("remove")));
    remove->setToolTip(tr("Remove the selected files from the list; the files stay on disk"));
}

QList<QAction*> Actions::artCommands() const
{
    return {updateImage, pasteImage, copyImage, saveImage, deleteImage};
}

QList<QAction*> Actions::rowCommands() const
{
    return {quickLook, rename,  showInFinder,          nullptr,      numberTracks, updateImage, nullptr,
            remove,    nullptr, removeUnsupportedTags, removeAllTags};
}

void Actions::setDeleteTarget(DeleteTarget target)
{
    deleteTarget_ = target;
    const bool isArt = target == DeleteTarget::Art;
    const QKeySequence key(QKeySequence::Delete);
    remove->setShortcut(target == DeleteTarget::Rows ? key : QKeySequence());
    deleteImage->setShortcut(isArt ? key : QKeySequence());
    erase->setData(isArt ? CommandValidation::DeleteImage : CommandValidation::Remove);
    if (target == DeleteTarget::Text)
        erase->setText(tr("De&lete"));
    else
        erase->setText(isArt ? tr("De&lete Album Art") : remove->text());
    update();
}

void Actions::setPreviewShown(bool shown)
{
    previewShown_ = shown;
    update();
}

void Actions::setWorking(bool working)
{
    if (isWorking_ == working)
        return;
    isWorking_ = working;
    update();
}

void Actions::setLocked(bool locked)
{
    isLocked_ = locked;
    for (auto* menu : std::as_const(lockedToo_))
        menu->setEnabled(!locked);
    update();
}

bool Actions::isApplicable(const QAction& action, const CommandValidation::State& state) const
{
    if (isWorking_ || (&action == erase && deleteTarget_ == DeleteTarget::Text))
        return false;
    const QList<const QAction*> harmless{showInFinder, quickLook, saveImage, copyImage, preferences, about};
    return CommandValidation::validateMenuItem(action.data().toInt(), state)
           && (!isLocked_ || harmless.contains(&action));
}

void Actions::update()
{
    CommandValidation::State state;
    state.anySelected = list_.selection().hasSelection();
    state.artShown = art_.isShown();
    state.artThere = art_.isThere();
    state.previewShown = previewShown_;
    for (auto* action : findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
        const int tag = action->data().toInt();
        action->setEnabled(isApplicable(*action, state));
        const QString title = CommandValidation::title(tag, state);
        if (!title.isNull())
            action->setText(title);
        if (action == quickLook)
            action->setIconText(tr("Preview"));
    }
}
