#pragma once

#include "app/FailureLog.h"
#include "app/NotificationPoster.h"
#include "app/Updater.h"
#include "app/ui/Appearance.h"
#include "app/ui/MainWindow.h"
#include "app/ui/MessagesWindow.h"
#include "app/ui/PlaybackBar.h"
#include "app/ui/PreviewPanel.h"
#include "app/ui/preferences/PreferencesTabViewController.h"
#include "fakes/FakeAudioPlayer.h"
#include "fakes/FakeFeedFetcher.h"
#include "fakes/Library.h"
#include "library/ui/QuickLookTableView.h"
#include "naming/ui/FileFormatController.h"
#include "naming/ui/TokenField.h"
#include "support/ScratchFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <QUrl>

/// Every window of the program, in its states, for tests about all of them.
class Windows {
public:
    Windows() { appear(*main_); }

    /// Adds a test row for each window, once for each mode.
    static void addRows(const QStringList& modes = {QString()})
    {
        QTest::addColumn<bool>("row");
        for (const auto* window : {"empty", "unselected", "main", "news", "format", "conflicts", "general", "updates",
                                   "about", "preview", "unplayable", "messages"}) {
            for (const auto& mode : modes)
                QTest::addRow("%s%s", window, qPrintable(mode)) << true;
        }
    }

    QWidget& open(const QString& name)
    {
        if (name == u"unselected" || name == u"main" || name == u"news")
            openMain(name != u"unselected");
        if (name == u"news")
            main_->findChild<QLineEdit*>(u"searchField"_qs)->setText(u"title"_qs);
        if (name == u"news")
            main_->showUpdate(u"2.0"_qs, QUrl(u"https://example.org/new"_qs));
        const QStringList panes{u"general"_qs, u"updates"_qs, u"about"_qs};
        if (panes.contains(name))
            return openPreferences(static_cast<int>(panes.indexOf(name)));
        if (name == u"format" || name == u"conflicts")
            return openFormat(name == u"conflicts");
        if (name == u"preview" || name == u"unplayable")
            return openPreview(name == u"preview");
        return name == u"messages" ? openMessages() : *main_;
    }

    MainWindow& mainWindow() { return *main_; }
    Library& library() { return library_; }

private:
    void appear(QWidget& window)
    {
        window.show();
        // The window behind it may be about to be activated.
        QCoreApplication::processEvents();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }
    void openMain(bool selected)
    {
        for (const auto& name : {u"v24.mp3"_qs, u"lame.mp3"_qs, u"two-pictures.mp3"_qs})
            QVERIFY(library_.loader.openPath(folder_.copy(name)));
        if (selected)
            library_.list.selection().setRows({0});
    }
    QWidget& openFormat(bool conflicts)
    {
        openMain(false);
        library_.controller.selectAll();
        library_.controller.showFormatWindow();
        auto* window = main_->findChild<FileFormatController*>();
        appear(*window);
        auto* field = window->findChild<TokenField*>();
        field->setTokens(conflicts ? QStringList{u"x"_qs} : QStringList{u"Title"_qs});
        auto* box = window->findChild<QCheckBox*>();
        [&] { QTRY_COMPARE(box->isVisible(), conflicts); }();
        return *window;
    }
    QWidget& openMessages()
    {
        main_->attachFailures(failures_);
        failures_.append({u"/music/x.mp3"_qs, u"Unable to update tags for: /music/x.mp3"_qs, u"No space left"_qs});
        main_->findChild<QToolButton*>(u"messages"_qs)->click();
        auto* window = main_->findChild<MessagesWindow*>();
        appear(*window);
        return *window;
    }
    QWidget& openPreview(bool playable)
    {
        openMain(true);
        const auto make = [playable]() -> std::unique_ptr<AudioPlayer> {
            auto player = std::make_unique<FakeAudioPlayer>();
            if (!playable)
                player->problem = AudioPlayer::Problem::NoDevice;
            return player;
        };
        preview_ = std::make_unique<PreviewPanel>(make, main_->findChild<QuickLookTableView*>(), main_.get());
        preview_->showPreview(*library_.list.arrangedObjects().front());
        appear(*preview_);
        preview_->findChild<PlaybackBar*>()->togglePlayback();
        return *preview_;
    }
    QWidget& openPreferences(int pane)
    {
        fetcher_.feed = "{\"version\": \"2.0\", \"page\": \"https://example.org/new\"}";
        updater_ = std::make_unique<Updater>(library_.defaults, fetcher_, QUrl(u"https://example.org/feed"_qs));
        updater_->setAutomaticallyChecksForUpdates(true);
        poster_ = std::make_unique<NotificationPoster>(library_.defaults, service_);
        preferences_ = std::make_unique<PreferencesTabViewController>(library_.defaults, *poster_, *updater_);
        preferences_->selectPane(pane);
        appear(*preferences_);
        return *preferences_;
    }

    ScratchFolder folder_;
    FakeNotificationService service_;
    FakeFeedFetcher fetcher_;
    FailureLog failures_;
    Library library_;
    std::unique_ptr<MainWindow> main_ =
        std::make_unique<MainWindow>(library_.controller, library_.list, library_.drops, library_.art,
                                     library_.artworkDrops, library_.recent, library_.defaults);
    std::unique_ptr<NotificationPoster> poster_;
    std::unique_ptr<Updater> updater_;
    std::unique_ptr<PreferencesTabViewController> preferences_;
    std::unique_ptr<PreviewPanel> preview_;
};

inline QString widgetText(const QWidget& widget)
{
    return QString::fromLatin1(widget.metaObject()->className()) + u' ' + widget.objectName() + u' '
           + widget.accessibleName();
}

/// The widgets that Tab leads to, in the order in which it does.
inline QList<QWidget*> tabChain(QWidget& window)
{
    QList<QWidget*> chain;
    for (auto* widget = window.nextInFocusChain(); widget != &window; widget = widget->nextInFocusChain()) {
        if (widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy() && widget->isEnabled()
            && widget->isVisibleTo(&window))
            chain.append(widget);
    }
    return chain;
}
