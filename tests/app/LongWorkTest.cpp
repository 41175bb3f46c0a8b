#include "app/LongWork.h"
#include "app/FailureLog.h"
#include "app/StartRecovery.h"
#include "app/ui/MessagesWindow.h"
#include "app/ui/StatusLine.h"
#include "fakes/Desk.h"
#include "support/CutShort.h"
#include "support/Rows.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QToolButton>
#include <QTreeView>

class LongWorkTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        desk_->window.attachWork(desk_->monitor);
        desk_->add(u"a b c"_qs);
        desk_->select(u"0"_qs);
        desk_->show();
        desk_->table.setFocus();
    }
    void cleanup() { desk_.reset(); }

    void showsWorkThatTakesLongerThanAMoment()
    {
        const auto* bar = desk_->find<QProgressBar>();
        const QSignalSpy advanced(&desk_->monitor, &LongWork::advanced);
        WorkLoop::run(desk_->monitor, QStringList(10'000, u"/music/x.mp3"_qs), [](const QString&) {});
        QVERIFY(advanced.isEmpty());
        bool shown = false;
        work([&](int done) {
            shown = bar->isVisible() && bar->maximum() == files && bar->value() > 0 && bar->value() < done;
        });
        QVERIFY(shown && !bar->isVisible());
        QVERIFY2(advanced.size() > 1 && advanced.size() < files / 2, qPrintable(QString::number(advanced.size())));
        const auto last = advanced.last();
        QCOMPARE(last[2].toString(), u"/music/%1.mp3"_qs.arg(files - last[0].toLongLong()));
        QVERIFY(!statusText().contains(u"Stopped"));
    }

    void allOfTheStatusLineFitsInTheSmallestWindow()
    {
        FailureLog log;
        desk_->window.attachFailures(log);
        log.append({{}, u"Unsupported file type"_qs, {}});
        auto* line = desk_->find<StatusLine>();
        line->showUpdate(u"10.11.12"_qs, {});
        desk_->window.resize(desk_->window.minimumSize());
        const int height = line->height();
        QStringList outside;
        work([&](int) {
            for (auto* part : line->findChildren<QWidget*>()) {
                if (part->isVisible()
                    && !desk_->window.rect().contains({part->mapTo(&desk_->window, QPoint()), part->size()}))
                    outside.append(QLatin1String(part->metaObject()->className()));
            }
        });
        QCOMPARE(outside, QStringList());
        QCOMPARE(line->height(), height);
    }

    // what the user does meanwhile | the state before it has happened | the state when it has
    void whatTheUserDoesWaits_data()
    {
        addRows({"delete | a b c:a | b c:b", "select all | a b c:a | a b c:a b c", "click | a b c:a | a b c:c",
                 "drop | a b c:a | a b c Blue Window:a", "close | a b c:a | :", "menu | a b c:a | a b c:a",
                 "bus | a b c:a | a b c Blue Window:a"});
    }
    void whatTheUserDoesWaits()
    {
        const auto [action, before, after] = row<3>();
        QCOMPARE(workWhile(action), files);
        QCOMPARE(state(), before);
        QVERIFY(!QApplication::activePopupWidget());
        if (action == u"menu")
            QVERIFY(closeMenu());
        QTRY_COMPARE(state(), after);
    }

    void canBeCanceledBetweenTwoFiles_data() { addRows({"escape", "cancel"}); }
    void canBeCanceledBetweenTwoFiles()
    {
        const QSignalSpy shownAgain(&desk_->controller, &ViewController::fieldsChanged);
        const int done = workWhile(row()[0]);
        QVERIFY2(done > 0 && done < files, qPrintable(QString::number(done)));
        QCOMPARE(statusText(), u"Stopped after %1 of %2 files"_qs.arg(done).arg(files));
        QCOMPARE(state(), u"a b c:a"_qs);
        QTRY_VERIFY(!shownAgain.isEmpty());
        QCOMPARE(work([](int) {}), files);
    }

    void failuresAreCountedListedCopiedAndEmptied()
    {
        FailureLog log;
        desk_->window.attachFailures(log);
        auto* counter = desk_->find<QToolButton>(u"messages"_qs);
        QVERIFY(!counter->isVisible());
        log.append({u"/music/x.mp3"_qs, u"Unable to update tags for: /music/x.mp3"_qs, u"No space left"_qs});
        log.append({{}, u"Unsupported file type"_qs, {}});
        QVERIFY(counter->isVisible() && counter->text().startsWith(u'2'));
        counter->click();
        auto* messages = desk_->find<MessagesWindow>();
        QVERIFY(messages && QTest::qWaitForWindowActive(messages));
        messages->showMinimized();
        counter->click();
        QVERIFY(!messages->isMinimized());
        button(*messages, u"&Copy All"_qs).click();
        const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        QCOMPARE(lines[0].section(u'\t', 1),
                 u"/music/x.mp3\tUnable to update tags for: /music/x.mp3 (No space left)"_qs);
        log.clear();
        QVERIFY(!counter->isVisible());
        auto* table = messages->findChild<QTreeView*>();
        QCOMPARE(table->model()->rowCount(), 0);
        QTest::keyClick(table, Qt::Key_Return);
        QVERIFY(!messages->isVisible());
    }

    // what has become of a file whose change was cut short | what the user presses | the message then
    void interruptedChangesAreListedWithWaysOut_data()
    {
        addRows({"grown | &Restore a Copy Beside It | Restored beside it as h (restored).mp3",
                 "grown | &Forget | The interrupted change is forgotten; the file stays as it is",
                 "gone | &Restore a Copy Beside It | No copy could be restored (No such file or directory)",
                 "back again | &Forget | The interrupted change has been taken back, or forgotten elsewhere"});
    }
    void interruptedChangesAreListedWithWaysOut()
    {
        const auto [event, pressed, message] = row<3>();
        const ScratchFolder scratch;
        qputenv("XDG_STATE_HOME", QFile::encodeName(scratch.path(u"state"_qs)));
        const QString path = roomyCopy(scratch, u"v24.mp3"_qs, u"h.mp3"_qs);
        const auto file = cutShort(path);
        if (event == u"grown")
            ScratchFolder::write(path, file.halfway + 'x');
        else
            QVERIFY(QFile::remove(path));
        FailureLog log;
        StartRecovery recovery(log);
        recovery.start();
        QTRY_COMPARE(log.rowCount(), 1);
        log.append({{}, u"Unsupported file type"_qs, {}});
        MessagesWindow messages(log, &desk_->window);
        auto& chosen = button(messages, pressed);
        QVERIFY(chosen.isEnabled());
        if (event == u"back again")
            ScratchFolder::write(path, file.halfway);
        chosen.click();
        QCOMPARE(log.index(0, FailureLog::Message).data().toString(), message);
        QCOMPARE(chosen.isEnabled(), event == u"gone");
        if (event == u"back again")
            QCOMPARE(ScratchFolder::contents(path), file.before);
        if (event == u"grown")
            QCOMPARE(ScratchFolder::contents(path), file.halfway + 'x');
        QCOMPARE(InterruptedChanges::recover().size(), event == u"gone" ? 1 : 0);
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
        WorkLoop::run(desk_->monitor, names, [&](const QString&) {
            QTest::qSleep(6);
            eachFile(++done);
        });
        return done;
    }
    /// The same, while the user does something.
    int workWhile(const QString& action)
    {
        bool happened = false;
        // A menu that does not wait would keep the work waiting; closing it is held as well.
        QTimer closing;
        closing.callOnTimeout([] {
            if (auto* menu = QApplication::activePopupWidget())
                menu->hide();
        });
        closing.start(10);
        const int done = work([&](int count) {
            if (count == 1)
                QTimer::singleShot(0, &desk_->window, [&] {
                    happened = true;
                    act(action);
                });
        });
        [&] { QVERIFY(happened); }();
        return done;
    }
    void act(const QString& action)
    {
        auto* handle = desk_->window.windowHandle();
        if (action == u"delete")
            QTest::keyClick(handle, Qt::Key_Delete);
        else if (action == u"select all")
            QTest::keyClick(handle, Qt::Key_A, Qt::ControlModifier);
        else if (action == u"escape")
            QTest::keyClick(handle, Qt::Key_Escape);
        else if (action == u"click")
            QTest::mouseClick(handle, Qt::LeftButton, {}, inWindow(desk_->cell(2)));
        else if (action == u"cancel")
            QTest::mouseClick(handle, Qt::LeftButton, {}, cancelPlace());
        else if (action == u"close")
            QVERIFY(!handle->close());
        else if (action == u"drop")
            drop(inWindow({40, 200}));
        else if (action == u"menu")
            pressMenuKey(inWindow({40, 10}));
        else
            desk_->monitor.whenIdle([this] { desk_->open(u"v24.mp3"_qs); });
    }
    void drop(const QPoint& place)
    {
        QMimeData dropped;
        dropped.setUrls({QUrl::fromLocalFile(desk_->folder.copy(u"v24.mp3"_qs))});
        QDropEvent event(place, Qt::CopyAction, &dropped, Qt::LeftButton, {});
        QCoreApplication::sendEvent(desk_->window.windowHandle(), &event);
    }
    void pressMenuKey(const QPoint& place)
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, place, desk_->window.mapToGlobal(place));
        QCoreApplication::sendEvent(desk_->window.windowHandle(), &event);
    }
    QPoint inWindow(const QPoint& inTable) const { return desk_->table.viewport()->mapTo(&desk_->window, inTable); }
    QPoint cancelPlace() const
    {
        const auto* cancel = &button(desk_->window, u"Cancel"_qs);
        return cancel->mapTo(&desk_->window, cancel->rect().center());
    }
    static QPushButton& button(const QWidget& window, const QString& text)
    {
        for (auto* button : window.findChildren<QPushButton*>()) {
            if (button->text() == text)
                return *button;
        }
        qFatal("There is no button %s", qPrintable(text));
    }
    QString statusText() const
    {
        QStringList texts;
        for (const auto* label :
             desk_->window.statusBar()->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
            texts.append(label->text());
        return texts.join(u' ');
    }
    QString state() const
    {
        return Library::titles(desk_->list.content()) + u':' + Library::titles(desk_->list.selectedObjects());
    }

    std::unique_ptr<Desk> desk_;
};

QTEST_MAIN(LongWorkTest)
#include "LongWorkTest.moc"
