#include "app/ui/FirstPaint.h"
#include "fakes/Desk.h"
#include "library/ui/TagField.h"
#include "support/Rows.h"
#include "tagengine/TaglibWrapper.h"

#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QStatusBar>

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        desk_ = std::make_unique<Desk>();
        desk_->show();
        for (const auto& fixture : {u"v24.mp3"_qs, u"lame.mp3"_qs, u"emoji.m4a"_qs})
            paths_.append(desk_->open(fixture));
        click(0);
        QCOMPARE(desk_->list.selection().rows(), QList{0});
    }
    void cleanup()
    {
        desk_.reset();
        paths_.clear();
    }

    void writesToTheRecordsThatWereSelected_data()
    {
        addRows({"TITLE | click", "TITLE | shift-click", "TITLE | select all", "TITLE | search", "TITLE | sort",
                 "TITLE | remove", "TITLE | down", "TITLE | close", "GENRE | click", "GENRE | shift-click",
                 "GENRE | select all", "GENRE | search", "GENRE | sort", "GENRE | remove", "GENRE | down",
                 "GENRE | close"});
    }
    void writesToTheRecordsThatWereSelected()
    {
        const auto [key, action] = row<2>();
        const std::vector before{tags(0), tags(1), tags(2)};
        auto& field = *desk_->find<TagField>(key);
        QTest::mouseDClick(&field, Qt::LeftButton);
        field.selectAll();
        auto* focused = QApplication::focusWidget();
        QTest::keyClicks(focused, u"Jazz"_qs);
        QTest::keyClick(focused, Qt::Key_Delete);
        QCOMPARE(tags(0), before[0]);
        act(action);
        // Nothing may be left that is written to the new selection later.
        QCoreApplication::processEvents();
        PropertyMap expected = before[0];
        expected[key] = u"Jazz"_qs;
        QCOMPARE(tags(0), expected);
        QCOMPARE(tags(1), before[1]);
        QCOMPARE(tags(2), before[2]);
        if (action == u"down") {
            QCOMPARE(desk_->list.selection().rows(), QList{1});
            QCOMPARE(QApplication::focusWidget(), focused);
            QCOMPARE(field.selectedText(), tags(1)[key]);
        }
    }

    void stepsSelectWhatIsOnlyCurrent()
    {
        for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_Home}) {
            click(0);
            desk_->controller.deselectAll();
            QCOMPARE(desk_->table.currentIndex().row(), 0);
            QTest::keyClick(&desk_->table, key, Qt::ControlModifier);
            QCOMPARE(desk_->list.selection().rows(), QList<int>());
            QTest::keyClick(&desk_->table, key);
            QCOMPARE(desk_->list.selection().rows(), QList{0});
        }
    }

    void tabFollowsTheReading()
    {
        QStringList names;
        desk_->table.setFocus();
        for (int i = 0; i < 3; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(names, (QStringList{u"artWell"_qs, u"TITLE"_qs, u"ARTIST"_qs}));
        desk_->table.setFocus();
        QTest::keyClick(&desk_->table, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"searchField"_qs);
    }

    void fileNamesTakeTheRoomThatIsLeft()
    {
        const auto& header = *desk_->table.horizontalHeader();
        const auto left = [&] { return desk_->table.viewport()->width() - header.length(); };
        for (const int width : {1300, 1100, 800, 1200}) {
            desk_->window.resize(width, 500);
            QTRY_COMPARE(desk_->window.width(), width);
            QTRY_VERIFY(width < 1000 ? left() < 0 : left() == 0);
        }
        const int before = header.length();
        desk_->table.setColumnWidth(RecordColumns::Artist, 60);
        desk_->window.resize(1300, 500);
        QTRY_COMPARE(desk_->window.width(), 1300);
        QTRY_VERIFY(left() > 100);
        QVERIFY(header.length() < before);
        desk_->table.setColumnWidth(RecordColumns::FileName, header.sectionSize(RecordColumns::FileName) + left());
        desk_->table.setColumnWidth(RecordColumns::FileName, header.sectionSize(RecordColumns::FileName) + 70);
        const int chosen = header.sectionSize(RecordColumns::FileName);
        desk_->window.resize(1250, 500);
        QTRY_COMPARE(desk_->window.width(), 1250);
        QCOMPARE(header.sectionSize(RecordColumns::FileName), chosen);
    }

    // what has the keyboard | the entries of menus that are shown with the key Delete | the rows that it leaves
    void deleteKeyRemovesOnlyInTheTable_data()
    {
        addRows({"table | Remove from List, Remove from List | 2", "artWell | Delete Album Art, Delete Album Art | 3",
                 "TITLE | Delete (off) | 3"});
    }
    void deleteKeyRemovesOnlyInTheTable()
    {
        const auto [name, expected, left] = row<3>();
        QTRY_VERIFY(desk_->art.isShown());
        desk_->find<QWidget>(name)->setFocus();
        // As a menu does that is opened by its letter.
        desk_->window.menuBar()->setFocus(Qt::MenuBarFocusReason);
        QStringList texts;
        for (const auto* menu : desk_->window.menuBar()->findChildren<QMenu*>()) {
            for (const auto* action : menu->actions()) {
                if (action->shortcut() == QKeySequence(QKeySequence::Delete))
                    texts += action->text().remove(u'&') + (action->isEnabled() ? QString() : u" (off)"_qs);
            }
        }
        QCOMPARE(texts.join(u", "_qs), expected);
        desk_->find<QWidget>(name)->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QCOMPARE(desk_->list.rowCount(), left.toInt());
        QCOMPARE(desk_->art.isShown(), name == u"TITLE");
    }

    void noLetterStripsTags()
    {
        const PropertyMap before = tags(0);
        for (auto* menu : desk_->window.menuBar()->findChildren<QMenu*>()) {
            if (menu->title() != u"&Tags")
                continue;
            menu->popup({});
            QTest::keyClick(menu, Qt::Key_A);
            QTest::keyClick(menu, Qt::Key_U);
            QVERIFY(menu->isVisible());
        }
        QCOMPARE(tags(0), before);
    }

    // command | whether a file is missing | what the status line tells then
    void tellsWhatWasDone_data()
    {
        addRows({"number | no | 3 files numbered", "strip all | no | Tags removed from 3 files",
                 "strip all | yes | Tags removed from 2 of 3 files",
                 "strip | no | Unsupported tags removed from 1 files", "paste | no | Album art set in 3 files",
                 "delete | yes | Album art deleted in 2 of 3 files"});
    }
    void tellsWhatWasDone()
    {
        const auto [command, missing, expected] = row<3>();
        const QHash<QString, void (ViewController::*)()> commands{
            {u"number"_qs, &ViewController::incrementTrackNumbers}, {u"strip all"_qs, &ViewController::removeAllTags},
            {u"strip"_qs, &ViewController::removeUnsupportedTags},  {u"paste"_qs, &ViewController::pasteImage},
            {u"delete"_qs, &ViewController::deleteImage},
        };
        QApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
        QVERIFY(missing == u"no" || QFile::remove(paths_[1]));
        desk_->controller.selectAll();
        (desk_->controller.*commands[command])();
        const auto* status = desk_->window.statusBar()->findChild<QLabel*>();
        QCOMPARE(status->text(), u"3 files, 3 selected · "_qs + expected);
        click(0);
        QCOMPARE(status->text(), u"3 files, 1 selected"_qs);
    }

    void remembersItsLayout()
    {
        desk_->table.setColumnWidth(RecordColumns::Artist, 77);
        desk_->table.setColumnHidden(RecordColumns::Year, true);
        desk_->table.horizontalHeader()->moveSection(1, 3);
        desk_->table.sortByColumn(RecordColumns::Title, Qt::DescendingOrder);
        desk_->window.resize(780, 555);
        QVERIFY(desk_->window.close());
        Library& library = *desk_;
        library.add(u"a c b"_qs);
        library.list.sort(RecordColumns::Year);
        MainWindow again(library.controller, library.list, library.drops, library.art, library.artworkDrops,
                         library.recent, library.defaults);
        again.show();
        const auto& table = *again.findChild<QuickLookTableView*>();
        QCOMPARE(again.size(), QSize(780, 555));
        QCOMPARE(table.columnWidth(RecordColumns::Artist), 77);
        QVERIFY(table.isColumnHidden(RecordColumns::Year) && !table.isColumnHidden(RecordColumns::Title));
        QCOMPARE(table.horizontalHeader()->visualIndex(1), 3);
        QCOMPARE(Library::titles(library.list.content()), u"c b a"_qs);
    }

    void isPaintedBeforeWhatCanWait()
    {
        struct Painted : QWidget {
            void paintEvent(QPaintEvent*) override { ++paints; }
            int paints = 0;
        } widget;
        QList<int> paintsBefore;
        FirstPaint::then(widget, [&] { paintsBefore += widget.paints; });
        QCoreApplication::processEvents();
        QVERIFY(paintsBefore.isEmpty());
        widget.show();
        QTRY_VERIFY(!paintsBefore.isEmpty());
        widget.repaint();
        QCoreApplication::processEvents();
        QCOMPARE(paintsBefore.size(), 1);
        QVERIFY(paintsBefore.first() > 0);
    }

private:
    void act(const QString& action)
    {
        auto* search = desk_->find<QLineEdit>(u"searchField"_qs);
        if (action == u"click")
            click(1);
        else if (action == u"shift-click")
            click(2, Qt::ShiftModifier);
        else if (action == u"select all")
            desk_->controller.selectAll();
        else if (action == u"search") {
            QTest::mouseClick(search, Qt::LeftButton);
            QTest::keyClicks(search, u"lame"_qs);
        } else if (action == u"sort")
            desk_->table.sortByColumn(RecordColumns::Title, Qt::DescendingOrder);
        else if (action == u"remove")
            desk_->controller.removeDocuments();
        else if (action == u"down")
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        else
            QVERIFY(desk_->window.close());
    }
    void click(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(desk_->table.viewport(), Qt::LeftButton, modifiers, desk_->cell(row));
    }
    PropertyMap tags(qsizetype file) const { return TaglibWrapper::getMetadata(paths_[file]).value(); }

    std::unique_ptr<Desk> desk_;
    QStringList paths_;
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
