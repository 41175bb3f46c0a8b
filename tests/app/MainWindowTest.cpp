#include "app/ui/MainWindow.h"
#include "app/ui/EmptyListHint.h"
#include "app/ui/FirstPaint.h"
#include "fakes/Library.h"
#include "library/RecordColumns.h"
#include "library/ui/QuickLookTableView.h"
#include "library/ui/TagField.h"
#include "platform/UserDefaults.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QUrl>

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        open();
        for (const auto& [fixture, name] :
             {std::pair{u"v24.mp3"_qs, names_[0]}, {u"lame.mp3"_qs, names_[1]}, {u"emoji.m4a"_qs, names_[2]}})
            QVERIFY(library_->loader.openPath(folder_->copy(fixture, name)));
        click(0);
        QCOMPARE(library_->list.selection().rows(), QList{0});
    }

    void cleanup()
    {
        window_.reset();
        library_.reset();
        defaults_.reset();
    }

    void writesToTheRecordsThatWereSelected_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("action");
        const auto actions = u"click|shift-click|select all|search|filter|sort|remove|close"_qs.split(u'|');
        for (const auto& key : {u"TITLE"_qs, u"GENRE"_qs}) {
            for (const auto& action : actions)
                QTest::addRow("%s, %s", qPrintable(key), qPrintable(action)) << key << action;
        }
    }

    void writesToTheRecordsThatWereSelected()
    {
        QFETCH(QString, key);
        QFETCH(QString, action);
        const std::vector before{tags(names_[0]), tags(names_[1]), tags(names_[2])};
        auto& field = find<TagField>(key);
        QTest::mouseDClick(&field, Qt::LeftButton);
        field.selectAll();
        QTest::keyClicks(QApplication::focusWidget(), u"Jazz"_qs);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QCOMPARE(tags(names_[0]), before[0]);
        act(action);
        // Nothing may be left that is written to the new selection later.
        QCoreApplication::processEvents();
        PropertyMap expected = before[0];
        expected[key] = u"Jazz"_qs;
        QCOMPARE(tags(names_[0]), expected);
        QCOMPARE(tags(names_[1]), before[1]);
        QCOMPARE(tags(names_[2]), before[2]);
    }

    void arrowKeysStayInTheField()
    {
        for (const auto& key : {u"ALBUM"_qs, u"GENRE"_qs}) {
            click(0);
            auto& field = find<TagField>(key);
            field.setFocus(Qt::TabFocusReason);
            field.selectAll();
            auto* focused = QApplication::focusWidget();
            QTest::keyClicks(focused, u"Zydeco"_qs);
            const PropertyMap second = tags(names_[1]);
            QTest::keyClick(focused, Qt::Key_Down);
            QCoreApplication::processEvents();
            QCOMPARE(library_->list.selection().rows(), QList{1});
            QCOMPARE(tags(names_[0])[key], u"Zydeco"_qs);
            QCOMPARE(tags(names_[1]), second);
            QCOMPARE(QApplication::focusWidget(), focused);
            QCOMPARE(field.selectedText(), second[key]);
            QTest::keyClick(focused, Qt::Key_Up);
            QTest::keyClick(focused, Qt::Key_Up);
            QCOMPARE(library_->list.selection().rows(), QList{0});
            QCOMPARE(field.text(), u"Zydeco"_qs);
        }
    }

    void deleteKeyRemovesOnlyInTheTable()
    {
        auto& title = find<TagField>(u"TITLE"_qs);
        title.setFocus();
        QTest::keyClick(&title, Qt::Key_Delete);
        QCOMPARE(library_->list.rowCount(), 3);
        table().setFocus();
        QTest::keyClick(&table(), Qt::Key_Delete);
        QCOMPARE(library_->list.rowCount(), 2);
        QCOMPARE(find<TagField>(u"TITLE"_qs).text(), u"Lame Title"_qs);
    }

    void remembersItsLayout()
    {
        table().setColumnWidth(RecordColumns::Artist, 77);
        table().setColumnHidden(RecordColumns::Genre, false);
        table().setColumnHidden(RecordColumns::Year, true);
        table().horizontalHeader()->moveSection(1, 3);
        table().sortByColumn(RecordColumns::Title, Qt::DescendingOrder);
        window_->resize(780, 555);
        QVERIFY(window_->close());
        QCOMPARE(library_->list.rowCount(), 0);
        cleanup();
        open();
        QCOMPARE(window_->size(), QSize(780, 555));
        QCOMPARE(table().columnWidth(RecordColumns::Artist), 77);
        QVERIFY(!table().isColumnHidden(RecordColumns::Genre) && table().isColumnHidden(RecordColumns::Year));
        QCOMPARE(table().horizontalHeader()->visualIndex(1), 3);
        library_->add(u"a c b"_qs);
        QCOMPARE(Library::titles(library_->list.content()), u"c b a"_qs);
    }

    void addsDroppedFiles()
    {
        QMimeData data;
        data.setUrls(
            {QUrl::fromLocalFile(folder_->copy(u"tagged.m4a"_qs)), QUrl::fromLocalFile(folder_->path(names_[0]))});
        drop(data, *table().viewport());
        QCOMPARE(library_->list.rowCount(), 4);
        QCOMPARE(library_->notifier.posted, QStringList{u"Sonvika: File already open"_qs});
        library_->controller.selectAll();
        library_->controller.removeDocuments();
        auto& hint = *window_->findChild<EmptyListHint*>();
        QVERIFY(hint.isVisible());
        drop(data, hint);
        QCOMPARE(library_->list.rowCount(), 2);
        QVERIFY(!hint.isVisible());
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
    void open()
    {
        library_ = std::make_unique<Library>();
        defaults_ = std::make_unique<UserDefaults>(folder_->path(u"settings.ini"_qs));
        window_ = std::make_unique<MainWindow>(library_->controller, library_->list, library_->drops, library_->art,
                                               library_->artworkDrops, library_->recent, *defaults_);
        window_->show();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    }
    void act(const QString& action)
    {
        auto& search = find<QLineEdit>(u"searchField"_qs);
        if (action == u"click")
            click(1);
        else if (action == u"shift-click")
            click(2, Qt::ShiftModifier);
        else if (action == u"select all")
            library_->controller.selectAll();
        else if (action == u"search") {
            QTest::mouseClick(&search, Qt::LeftButton);
            QTest::keyClicks(&search, u"lame"_qs);
        } else if (action == u"filter")
            search.setText(u"lame"_qs);
        else if (action == u"sort")
            table().sortByColumn(RecordColumns::Title, Qt::DescendingOrder);
        else if (action == u"remove")
            library_->controller.removeDocuments();
        else
            QVERIFY(window_->close());
    }
    template <class Widget>
    Widget& find(const QString& name)
    {
        return *window_->findChild<Widget*>(name);
    }
    QuickLookTableView& table() { return find<QuickLookTableView>(u"table"_qs); }
    QPoint cell(int row) { return table().visualRect(library_->list.index(row, RecordColumns::Title)).center(); }
    void click(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers, cell(row));
    }
    static void drop(const QMimeData& data, QWidget& target)
    {
        const QPoint at(5, 5);
        QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&target, &enter);
        QDropEvent dropped(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&target, &dropped);
    }
    PropertyMap tags(const QString& name) { return TaglibWrapper::getMetadata(folder_->path(name)).value(); }

    const QStringList names_{u"1.mp3"_qs, u"2.mp3"_qs, u"3.m4a"_qs};
    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<Library> library_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<MainWindow> window_;
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
