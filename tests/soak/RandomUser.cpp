#include "soak/RandomUser.h"

#include "app/ui/MainWindow.h"
#include "app/ui/MessagesWindow.h"
#include "library/ArrayController.h"
#include "platform/PathBytes.h"
#include "soak/Input.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMenuBar>
#include <QPixmapCache>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>

#include <csignal>

#include <malloc.h>
#include <unistd.h>
#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

constexpr int rests = 8;
constexpr int longestUse = 60'000;
constexpr int settlesAfter = 300;
/// Seconds in which something must go on.
constexpr unsigned int patience = 60;

const QStringList schemes{u"https"_qs, u"mailto"_qs, u"file"_qs};
const QStringList textFields{u"TITLE"_qs, u"ARTIST"_qs, u"ALBUM"_qs, u"ALBUMARTIST"_qs, u"GENRE"_qs, u"COMMENT"_qs};

qint64 bytesInUse()
{
#ifdef __SANITIZE_ADDRESS__
    return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
    const auto info = ::mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
#endif
}

QAction& quitAction(const QWidget& window)
{
    const auto actions = window.findChildren<QAction*>();
    return **std::find_if(actions.begin(), actions.end(),
                          [](const auto* action) { return action->menuRole() == QAction::QuitRole; });
}

void showMainWindow(QWidget& window)
{
    window.setWindowState(Qt::WindowNoState);
    window.activateWindow();
}

QList<QWidget*> otherWindows(const QWidget* window)
{
    QList<QWidget*> windows = QApplication::topLevelWidgets();
    windows.removeIf([&](const auto* widget) {
        return widget == window || !widget->isVisible() || widget->windowType() == Qt::ToolTip;
    });
    return windows;
}

QJsonObject tagsOf(const AudioFile& record)
{
    QJsonObject tags;
    for (const auto& field : AudioFile::tagFields())
        tags[QLatin1String(field.name)] = record.*field.text;
    return tags;
}

} // namespace

RandomUser::RandomUser(unsigned int seed, int seconds, QString folder)
    : chance_{std::mt19937(seed)}, milliseconds_(seconds * 1000), folder_(std::move(folder))
{
}

void RandomUser::act()
{
    if (phase_ == Phase::Over)
        return;
    ::alarm(patience);
    // Menus, message boxes and drags wait for what comes next in the middle of what began them.
    QTimer::singleShot(1, this, &RandomUser::act);
    const QScopedValueRollback depth(depth_, depth_ + 1);
    if (window_ || findProgram())
        actInFront();
}

bool RandomUser::findProgram()
{
    for (auto* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<MainWindow*>(widget); window && window->isVisible())
            window_ = window;
    }
    if (!window_)
        return false;
    std::signal(SIGALRM, [](int) { std::abort(); });
    table_ = window_->findChild<QTableView*>(u"table"_qs);
    list_ = static_cast<ArrayController*>(table_->model());
    quitAction(*window_).setEnabled(false);
    for (const auto& scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, this, "noteAddress");
    time_.start();
    return true;
}

void RandomUser::actInFront()
{
    if (window_->findChild<QProgressBar*>()->isVisible())
        return whileWorking();
    cancels_ = chance_.oneIn(2);
    if (phase_ == Phase::Using) {
        lastUse_ = time_.elapsed();
        phase_ = lastUse_ >= nextRest_ ? Phase::Emptying : Phase::Using;
    }
    if (time_.elapsed() - lastUse_ > 3000 * patience)
        qFatal("The list of %d can't be emptied or filled", int(list_->content().size()));
    const auto others = otherWindows(window_);
    if (depth_ > 1 && goOnDragging())
        return;
    if (auto* popup = QApplication::activePopupWidget())
        inMenu(*popup);
    else if (auto* modal = QApplication::activeModalWidget())
        inOtherWindow(*modal);
    else if (depth_ > 1)
        return;
    else if (!others.isEmpty() && (phase_ != Phase::Using || !chance_.oneIn(4)))
        inOtherWindow(*others.last());
    else if (QGuiApplication::focusWindow() != window_->windowHandle())
        showMainWindow(*window_);
    else if (phase_ == Phase::Using)
        inMainWindow();
    else if (phase_ == Phase::Emptying)
        empty();
    else if (phase_ == Phase::Filling)
        fill();
    else
        end();
}

void RandomUser::whileWorking()
{
    if (phase_ != Phase::Using || !chance_.oneIn(5))
        return;
    ++counts_[cancels_ ? "cancel" : "something in the middle of work"];
    if (cancels_ && chance_.oneIn(2))
        Input::click(*window_->findChild<QProgressBar*>()->parentWidget()->findChild<QPushButton*>());
    else if (cancels_)
        Input::key(Qt::Key_Escape);
    else if (chance_.oneIn(2))
        Hands::pressKey(chance_, true);
    else
        Hands::clickAnywhere(chance_, *window_);
}

void RandomUser::inMenu(QWidget& popup)
{
    ++counts_["in a menu"];
    auto* menu = qobject_cast<QMenu*>(&popup);
    if (phase_ != Phase::Using || chance_.oneIn(4))
        Input::key(Qt::Key_Escape);
    else if (menu && !menu->isEmpty())
        Input::click(*menu, menu->actionGeometry(chance_.any(menu->actions())).center());
    else
        Input::key(chance_.oneIn(2) ? Qt::Key_Down : Qt::Key_Return);
}

void RandomUser::inOtherWindow(QWidget& window)
{
    ++counts_["in another window"];
    window.activateWindow();
    auto* rename = window.findChild<QPushButton*>(u"rename"_qs);
    auto* dialog = qobject_cast<QFileDialog*>(&window);
    if (dialog && phase_ == Phase::Using && !chance_.oneIn(4))
        Hands::answer(chance_, *dialog, folder_);
    else if (qobject_cast<MessagesWindow*>(&window) && phase_ != Phase::Using)
        Input::click(Hands::part(window, u"clear"_qs));
    else if (phase_ != Phase::Using || dialog || chance_.oneIn(6))
        window.close();
    else if (rename && chance_.oneIn(6))
        Input::click(*rename);
    else if (chance_.oneIn(4))
        Hands::typeText(chance_);
    else if (chance_.oneIn(3))
        Hands::pressKey(chance_);
    else
        Hands::clickAnywhere(chance_, window);
}

void RandomUser::inMainWindow()
{
    struct Kind {
        const char* name;
        std::function<void()> act;
    };
    const Kind kinds[]{{"key", [this] { Hands::pressKey(chance_); }},
                       {"key", [this] { Hands::pressKey(chance_); }},
                       {"text", [this] { Hands::typeText(chance_); }},
                       {"click anywhere", [this] { Hands::clickAnywhere(chance_, *window_); }},
                       {"click on a row", [this] { useList(); }},
                       {"click on a row", [this] { useList(); }},
                       {"edit of a field", [this] { editField(); }},
                       {"edit of a field", [this] { editField(); }},
                       {"click on the box", [this] { Input::click(*window_->findChild<QCheckBox*>()); }},
                       {"menu or shortcut", [this] { useMenuOrShortcut(); }},
                       {"menu or shortcut", [this] { useMenuOrShortcut(); }},
                       {"art", [this] { useArt(); }},
                       {"drag", [this] { drag(); }},
                       {"new size", [this] { window_->resize(600 + chance_.below(800), 400 + chance_.below(500)); }}};
    // Work on many files is the exception.
    constexpr int many = 50;
    if (list_->selection().rows().size() > many && !chance_.oneIn(8))
        Hands::selectFew(chance_, *table_);
    const auto kind = chance_.any(kinds);
    ++counts_[kind.name];
    kind.act();
}

void RandomUser::useList()
{
    auto& rows = *table_->viewport();
    table_->scrollTo(list_->index(chance_.below(list_->rowCount()), 0));
    Input::click(rows, chance_.placeIn(rows), chance_.oneIn(12) ? Qt::RightButton : Qt::LeftButton,
                 chance_.any(Hands::modifiers));
    if (!chance_.oneIn(4))
        return;
    ++counts_["files opened again"];
    auto missing = Hands::filesIn(folder_ + u"/music"_qs);
    missing.removeIf([this](const QString& path) { return list_->anyPathContains(path) && !chance_.oneIn(90); });
    Hands::dropFiles(rows, missing);
}

void RandomUser::useMenuOrShortcut()
{
    auto& bar = *window_->menuBar();
    const auto* action = chance_.any(window_->findChildren<QAction*>());
    const auto keys = action->shortcut();
    if (chance_.oneIn(3)) {
        ++counts_["search"];
        auto& field = Hands::part(*window_, u"searchField"_qs);
        Input::click(field);
        if (!field.hasFocus() || !chance_.oneIn(3))
            Input::key(Qt::Key_Escape);
        else
            Input::type(Hands::anyWord(chance_).left(2));
    } else if (!action->isEnabled() || keys.isEmpty() || Hands::isNumberFocused()) {
        Input::click(bar, bar.actionGeometry(chance_.any(bar.actions())).center());
    } else {
        Input::key(keys[0].key(), keys[0].keyboardModifiers());
    }
}

void RandomUser::editField()
{
    Hands::selectFew(chance_, *table_);
    auto& field = Hands::part(*window_, chance_.any(textFields + Hands::numberFields));
    Input::click(field);
    if (!field.hasFocus())
        return;
    Input::key(Qt::Key_A, Qt::ControlModifier);
    chance_.oneIn(6) ? Input::key(Qt::Key_Delete) : Hands::typeText(chance_);
    if (!chance_.oneIn(4))
        Input::key(chance_.any(std::array{Qt::Key_Return, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Down, Qt::Key_Escape}));
}

void RandomUser::useArt()
{
    Hands::selectFew(chance_, *table_);
    auto& well = Hands::part(*window_, u"artWell"_qs);
    const QDir pictures(folder_ + u"/pictures"_qs);
    QFile picture(pictures.filePath(chance_.any(pictures.entryList(QDir::Files))));
    if (chance_.oneIn(3)) {
        Hands::dropFiles(well, {picture.fileName()});
    } else if (chance_.oneIn(2) && picture.open(QIODevice::ReadOnly)) {
        QMimeData dropped;
        dropped.setData(u"image/jpeg"_qs, picture.readAll());
        Input::drop(well, dropped);
    } else {
        Input::click(well);
        const auto keys = chance_.any(std::array{QKeySequence::Copy, QKeySequence::Paste, QKeySequence::Delete});
        const auto key = QKeySequence(keys)[0];
        Input::key(key.key(), key.keyboardModifiers());
    }
}

void RandomUser::drag()
{
    auto& widget =
        *chance_.any(std::array{table_->viewport(), table_->viewport(), table_->horizontalHeader()->viewport(),
                                &Hands::part(*window_, u"artWell"_qs)});
    const QPoint start = chance_.placeIn(widget);
    Input::mouse(widget, start, QEvent::MouseButtonPress);
    dragSteps_ = 2 + chance_.below(3);
    // A drag and drop goes on in the middle of the move that begins it.
    Input::mouse(widget, start + QPoint(15, 15), QEvent::MouseMove);
    Input::mouse(widget, start + QPoint(30, 20), QEvent::MouseMove);
    while (goOnDragging()) {
    }
}

bool RandomUser::goOnDragging()
{
    if (dragSteps_ == 0)
        return false;
    Input::mouse(*window_, chance_.placeIn(*window_),
                 --dragSteps_ > 0 ? QEvent::MouseMove : QEvent::MouseButtonRelease);
    return true;
}

void RandomUser::writeRecords() const
{
    QJsonArray entries;
    for (const auto& record : phase_ == Phase::Over ? records_ : list_->content()) {
        const auto again = AudioFile::fromFile(record->path);
        entries.append(QJsonArray{QString::fromLatin1(PathBytes::encode(record->path)), tagsOf(*record),
                                  again ? tagsOf(*again) : QJsonObject()});
    }
    QFile file(folder_ + u"/records-%1.json"_qs.arg(memory_.size(), 4, 10, QLatin1Char('0')));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(entries).toJson()) < 0)
        qFatal("Can't write %s", qPrintable(file.fileName()));
}

void RandomUser::empty()
{
    if (auto& messages = Hands::part(*window_, u"messages"_qs); messages.isVisible()) {
        Input::click(messages);
    } else if (!Hands::part(*window_, u"searchField"_qs).property("text").toString().isEmpty()) {
        Hands::part(*window_, u"searchField"_qs).setFocus();
        Input::key(Qt::Key_A, Qt::ControlModifier);
        Input::key(Qt::Key_Delete);
    } else if (!list_->content().empty()) {
        writeRecords();
        table_->setFocus();
        Input::key(Qt::Key_A, Qt::ControlModifier);
        Input::key(Qt::Key_Delete);
        // What is cached is no more at one time than at another.
        QGuiApplication::clipboard()->clear();
        QPixmapCache::clear();
        window_->resize(800, 600);
        nextRest_ = time_.elapsed() + settlesAfter;
    } else if (time_.elapsed() > nextRest_) {
        memory_.push_back(bytesInUse());
        std::printf("%4d s, %5.2f MB in use while the list is empty;", int(time_.elapsed() / 1000),
                    double(memory_.back()) / 1e6);
        int all = 0;
        for (const auto& [kind, count] : counts_) {
            std::printf(" %d %s,", count, kind.c_str());
            all += count;
        }
        std::printf(" %d in all\n", all);
        std::fflush(stdout);
        phase_ = Phase::Filling;
    }
}

void RandomUser::fill()
{
    const auto files = Hands::filesIn(folder_ + u"/music"_qs);
    if (list_->content().empty())
        Hands::dropFiles(*table_->viewport(), files);
    const bool isWhole = list_->content().size() == std::size_t(files.size());
    phase_ = isWhole && time_.elapsed() < milliseconds_ ? Phase::Using : Phase::Ending;
    nextRest_ = time_.elapsed() + std::min<qint64>(milliseconds_ / rests, longestUse);
}

void RandomUser::end()
{
    phase_ = Phase::Over;
    for (const auto& scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
    records_ = list_->content();
    table_->setFocus();
    Input::key(Qt::Key_Home);
    Hands::part(*window_, u"COMMENT"_qs).setFocus();
    Input::type(u"at the end"_qs);
    quitAction(*window_).setEnabled(true);
    quitAction(*window_).trigger();
}
