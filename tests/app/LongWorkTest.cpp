#include "app/LongWork.h"
#include "app/FailureLog.h"
#include "app/ui/MainWindow.h"
#include "app/ui/MessagesWindow.h"
#include "fakes/Library.h"
#include "library/ui/QuickLookTableView.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>

class LongWorkTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        library_ = std::make_unique<Library>();
        window_ = std::make_unique<MainWindow>(library_->controller, library_->list, library_->drops, library_->art,
                                               library_->artworkDrops, library_->recent, library_->defaults);
        window_->attachWork(library_->monitor);
        window_->show();
        library_->add(u"a b c"_qs);
        library_->list.selection().setRows({0});
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup()
    {
        window_.reset();
        library_.reset();
    }

    void showsWorkThatTakesLongerThanAMoment()
    {
        const auto* bar = window_->findChild<QProgressBar*>();
        const QSignalSpy advanced(&library_->monitor, &LongWork::advanced);
        QStringList names(10'000, u"/music/x.mp3"_qs);
        WorkLoop::run(library_->monitor, names, [](const QString&) {});
        QVERIFY(advanced.isEmpty());
        int paints = 0;
        const auto atEnd = [&](qsizetype done) {
            if (done < files)
                return;
            QVERIFY(bar->isVisible() && bar->maximum() == files && bar->value() > 0 && bar->value() < files);
            paints = static_cast<int>(advanced.size());
        };
        work(atEnd);
        QVERIFY2(paints > 1 && paints < files / 2, qPrintable(QString::number(paints)));
        const auto last = advanced.last();
        QCOMPARE(last[2].toString(), u"/music/%1.mp3"_qs.arg(files - last[0].toLongLong()));
        QVERIFY(!bar->isVisible());
        QVERIFY(!statusText().contains(u"Stopped"));
    }

    // what the user does meanwhile | the state before it has happened | the state when it has
    void whatTheUserDoesWaits_data()
    {
        addRows({"delete | a b c:a | b c:b", "select all | a b c:a | a b c:a b c", "click | a b c:a | a b c:c",
                 "drop | a b c:a | a b c Blue Window:a",
                 "close | a b c:a | :", "bus | a b c:a | a b c Blue Window:a"});
    }
    void whatTheUserDoesWaits()
    {
        const auto [action, before, after] = row<3>();
        bool happened = false;
        const int done = work([&, &what = action](qsizetype count) {
            if (count == 1)
                QTimer::singleShot(0, window_.get(), [&] {
                    happened = true;
                    act(what);
                });
        });
        QVERIFY(happened);
        QCOMPARE(done, files);
        QCOMPARE(state(), before);
        QTRY_COMPARE(state(), after);
    }

    void menusWaitToo()
    {
        auto* table = window_->findChild<QuickLookTableView*>();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        table->setFocus();
        const QPoint place = table->viewport()->mapTo(window_.get(), QPoint(40, 10));
        work([&](qsizetype count) {
            if (count == 1)
                QTimer::singleShot(0, window_.get(), [&] {
                    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, place, window_->mapToGlobal(place));
                    QCoreApplication::sendEvent(window_->windowHandle(), &menuKey);
                });
        });
        QVERIFY(!QApplication::activePopupWidget());
        bool opened = false;
        QTimer closer;
        closer.callOnTimeout([&] {
            if (auto* menu = QApplication::activePopupWidget()) {
                opened = true;
                menu->close();
            }
        });
        closer.start(10);
        QTRY_VERIFY(opened);
    }

    void canBeCanceledBetweenTwoFiles_data() { addRows({"escape", "cancel"}); }
    void canBeCanceledBetweenTwoFiles()
    {
        const auto [action] = row<1>();
        const QSignalSpy shownAgain(&library_->controller, &ViewController::fieldsChanged);
        const int done = work([&, &what = action](qsizetype count) {
            if (count == 1)
                QTimer::singleShot(0, window_.get(), [&] { act(what); });
        });
        QVERIFY2(done > 0 && done < files, qPrintable(QString::number(done)));
        QCOMPARE(statusText(), u"Stopped after %1 of %2 files"_qs.arg(done).arg(files));
        QCOMPARE(state(), u"a b c:a"_qs);
        QTRY_VERIFY(!shownAgain.isEmpty());
        QCOMPARE(work([](qsizetype) {}), files);
    }

    void failuresAreCountedListedCopiedAndEmptied()
    {
        FailureLog log;
        window_->attachFailures(log);
        auto* counter = window_->findChild<QToolButton*>(u"messages"_qs);
        QVERIFY(!counter->isVisible());
        log.append({u"/music/x.mp3"_qs, u"Unable to update tags for: /music/x.mp3"_qs, u"No space left"_qs});
        log.append({{}, u"Unsupported file type"_qs, {}});
        QVERIFY(counter->isVisible() && counter->text().startsWith(u'2'));
        counter->click();
        auto* messages = window_->findChild<MessagesWindow*>();
        QVERIFY(messages && QTest::qWaitForWindowActive(messages));
        auto* table = messages->findChild<QTreeView*>();
        QCOMPARE(table->model()->index(0, FailureLog::File).data().toString(), u"x.mp3"_qs);
        button(*messages, u"&Copy All"_qs)->click();
        const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[0].section(u'\t', 1),
                 u"/music/x.mp3\tUnable to update tags for: /music/x.mp3 (No space left)"_qs);
        table->selectionModel()->select(table->model()->index(1, 0),
                                        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text().section(u'\t', 1), u"\tUnsupported file type\n"_qs);
        log.clear();
        QVERIFY(!counter->isVisible());
        QCOMPARE(table->model()->rowCount(), 0);
        QTest::keyClick(table, Qt::Key_Return);
        QVERIFY(!messages->isVisible());
    }

private:
    static constexpr int files = 80;

    /// Works on so many files for longer than a moment. @return how many were worked on.
    template <class EachFile>
    int work(EachFile eachFile)
    {
        QStringList names;
        for (int number = files; number > 0; --number)
            names.append(u"/music/%1.mp3"_qs.arg(number));
        int done = 0;
        WorkLoop::run(library_->monitor, names, [&](const QString&) {
            QElapsedTimer busy;
            for (busy.start(); !busy.hasExpired(6);) {
            }
            eachFile(++done);
        });
        return done;
    }

    void act(const QString& action)
    {
        auto* handle = window_->windowHandle();
        auto* table = window_->findChild<QuickLookTableView*>();
        if (action == u"delete")
            QTest::keyClick(handle, Qt::Key_Delete);
        else if (action == u"select all")
            QTest::keyClick(handle, Qt::Key_A, Qt::ControlModifier);
        else if (action == u"escape")
            QTest::keyClick(handle, Qt::Key_Escape);
        else if (action == u"click")
            click(*table->viewport(), table->visualRect(table->model()->index(2, 0)).center());
        else if (action == u"cancel")
            click(*cancelButton(), cancelButton()->rect().center());
        else if (action == u"close")
            QVERIFY(!handle->close());
        else if (action == u"drop")
            drop(*table->viewport());
        else
            library_->monitor.whenIdle([this] { library_->loader.openPath(folder_->copy(u"v24.mp3"_qs)); });
    }

    void click(QWidget& widget, const QPoint& place)
    {
        QTest::mouseClick(window_->windowHandle(), Qt::LeftButton, {}, widget.mapTo(window_.get(), place));
    }

    void drop(QWidget& widget)
    {
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(folder_->copy(u"v24.mp3"_qs))});
        QDropEvent event(widget.mapTo(window_.get(), QPointF(40, 200)), Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window_->windowHandle(), &event);
    }

    static QPushButton* button(const QWidget& window, const QString& text)
    {
        const auto buttons = window.findChildren<QPushButton*>();
        const auto found =
            std::find_if(buttons.begin(), buttons.end(), [&](const auto* each) { return each->text() == text; });
        return found == buttons.end() ? nullptr : *found;
    }
    QPushButton* cancelButton() const { return button(*window_, u"Cancel"_qs); }

    QString statusText() const
    {
        QStringList texts;
        for (const auto* label : window_->statusBar()->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
            texts.append(label->text());
        return texts.join(u' ');
    }

    QString state() const
    {
        return Library::titles(library_->list.content()) + u':' + Library::titles(library_->list.selectedObjects());
    }

    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<Library> library_;
    std::unique_ptr<MainWindow> window_;
};

QTEST_MAIN(LongWorkTest)
#include "LongWorkTest.moc"
