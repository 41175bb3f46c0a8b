#include "app/ui/MainWindow.h"
#include "artwork/ui/AlbumArtView.h"
#include "artwork/ui/DropView.h"
#include "fakes/Library.h"
#include "library/RecordColumns.h"
#include "library/ui/QuickLookTableView.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <QApplication>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <QTimer>

/// Drags between this process, which is Sonvika, and another one, with the pointer of a real display.
class DragsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        library_ = std::make_unique<Library>();
        window_ = std::make_unique<MainWindow>(library_->controller, library_->list, library_->drops, library_->art,
                                               library_->artworkDrops, library_->recent, library_->defaults);
        for (const auto& fixture : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"untagged.mp3"_qs})
            QVERIFY(library_->loader.openPath(folder_->copy(fixture)));
        window_->setGeometry(0, 0, 1000, 700);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QVERIFY(QDir(folder_->path({})).mkpath(u"received"_qs));
    }
    void cleanup()
    {
        peer_.kill();
        peer_.waitForFinished();
        window_.reset();
        library_.reset();
        folder_.reset();
    }

    void artLeavesAsAFile()
    {
        library_->list.selection().setRows({0});
        library_->defaults.setInt(DefaultsKey::fileTypeIndex, 1);
        QTRY_VERIFY(!well().imageView().image().isNull());
        QVERIFY(startPeer({u"target"_qs, u"1050"_qs, u"100"_qs, folder_->path(u"received"_qs)}));
        dragTo(middle(well()), peerMiddle());
        QTRY_VERIFY_WITH_TIMEOUT(peerSaid("copied"), patience);
        QCOMPARE(QDir(folder_->path(u"received"_qs)).entryList(QDir::Files), QStringList{u"Blue Window.png"_qs});
        const QImage received(folder_->path(u"received/Blue Window.png"_qs), "png");
        QCOMPARE(received.size(), QImage::fromData(library_->art.bytes()).size());
    }

    void rowsLeaveAsCopies()
    {
        library_->list.selection().setRows({0, 1});
        QVERIFY(startPeer({u"target"_qs, u"1050"_qs, u"100"_qs, folder_->path(u"received"_qs)}));
        dragTo(cell(0), peerMiddle());
        QTRY_VERIFY_WITH_TIMEOUT(peerSaid("copied"), patience);
        for (const auto& name : {u"v24.mp3"_qs, u"tagged.m4a"_qs}) {
            QCOMPARE(ScratchFolder::contents(folder_->path(u"received/"_qs + name)), ScratchFolder::fixture(name));
            QCOMPARE(ScratchFolder::contents(folder_->path(name)), ScratchFolder::fixture(name));
        }
        QCOMPARE(library_->list.rowCount(), 3);
    }

    void rowsAreReorderedInside()
    {
        library_->list.selection().setRows({0});
        dragTo(cell(0), cell(2) + QPoint(0, 6));
        QTRY_COMPARE(library_->list.content()[2]->fileName, u"v24.mp3"_qs);
    }

    void picturesComeIn_data()
    {
        QTest::addColumn<QString>("offer");
        QTest::addColumn<bool>("taken");
        QTest::newRow("encoded data") << u"image/png=PICTURE"_qs << true;
        QTest::newRow("a file") << u"text/uri-list=ADDRESS"_qs << true;
        QTest::newRow("text") << u"text/plain=PICTURE"_qs << false;
        QTest::newRow("a source that dies") << u"image/png=die"_qs << false;
    }
    void picturesComeIn()
    {
        QFETCH(QString, offer);
        QFETCH(bool, taken);
        const QString picture = folder_->copy(u"cover.png"_qs);
        ScratchFolder::write(folder_->path(u"address"_qs), QUrl::fromLocalFile(picture).toEncoded() + "\r\n");
        library_->list.selection().setRows({0, 2});
        const QByteArray before = art(0);
        QVERIFY(
            startPeer({u"source"_qs, u"1050"_qs, u"100"_qs,
                       offer.replace(u"PICTURE"_qs, picture).replace(u"ADDRESS"_qs, folder_->path(u"address"_qs))}));
        dragTo(peerMiddle(), middle(well()));
        QTRY_VERIFY_WITH_TIMEOUT(peerSaid("taken") || peerSaid("refused") || peer_.state() == QProcess::NotRunning,
                                 patience);
        if (taken) {
            QTRY_COMPARE(art(2), ScratchFolder::fixture(u"cover.png"_qs));
            QTRY_COMPARE(art(0), ScratchFolder::fixture(u"cover.png"_qs));
        } else {
            QTRY_VERIFY(!well().canDrag());
            QCOMPARE(art(0), before);
        }
        QCOMPARE(ScratchFolder::contents(folder_->path(u"tagged.m4a"_qs)), ScratchFolder::fixture(u"tagged.m4a"_qs));
    }

    void whatIsDroppedInTheWrongPlaceDoesNoHarm()
    {
        library_->list.selection().setRows({0});
        const QByteArray before = art(0);
        const QString other = folder_->copy(u"lame.mp3"_qs);
        const QString picture = folder_->copy(u"cover.png"_qs);
        ScratchFolder::write(folder_->path(u"audio"_qs), QUrl::fromLocalFile(other).toEncoded() + "\r\n");
        ScratchFolder::write(folder_->path(u"picture"_qs), QUrl::fromLocalFile(picture).toEncoded() + "\r\n");
        for (const bool audio : {true, false}) {
            const QString offer = u"text/uri-list="_qs + folder_->path(audio ? u"audio"_qs : u"picture"_qs);
            QVERIFY(startPeer({u"source"_qs, u"1050"_qs, u"100"_qs, offer}));
            dragTo(peerMiddle(), audio ? middle(well()) : cell(1));
            QTRY_VERIFY_WITH_TIMEOUT(peerSaid("refused"), patience);
            QCOMPARE(art(0), before);
            QCOMPARE(library_->list.rowCount(), 3);
        }
    }

private:
    static constexpr int patience = 15'000;

    DropView& well() { return *window_->findChild<DropView*>(); }
    QPoint middle(QWidget& widget) { return widget.mapToGlobal(widget.rect().center()); }
    QPoint cell(int row)
    {
        auto& table = *window_->findChild<QuickLookTableView*>();
        return table.viewport()->mapToGlobal(
            table.visualRect(library_->list.index(row, RecordColumns::Title)).center());
    }
    QByteArray art(std::size_t row) const
    {
        const auto& record = *library_->list.content()[row];
        return TaglibWrapper::getImageData(record.path, record.fileType).value_or(QByteArray());
    }
    bool startPeer(const QStringList& arguments)
    {
        peer_.kill();
        peer_.waitForFinished();
        said_.clear();
        peer_.start(QStringLiteral(DRAG_PEER), arguments);
        return QTest::qWaitFor([this] { return peerSaid("shown"); }, patience);
    }
    bool peerSaid(const QByteArray& line)
    {
        said_ += peer_.readAllStandardOutput();
        return said_.split('\n').contains(line);
    }
    static QPoint peerMiddle() { return {1150, 200}; }
    static QString x(const QPoint& point) { return QString::number(point.x()); }
    static QString y(const QPoint& point) { return QString::number(point.y()); }
    /// Moves the pointer while this process goes on.
    static void move(const QStringList& commands)
    {
        QProcess pointer;
        pointer.start(QStringLiteral("xdotool"), commands);
        QVERIFY(QTest::qWaitFor([&] { return pointer.state() == QProcess::NotRunning; }, patience));
    }
    static void dragTo(const QPoint& from, const QPoint& to)
    {
        const QPoint start = from + (to - from) / 20;
        const QPoint half = (from + to) / 2;
        const QString pause = u"0.15"_qs;
        move({u"mousemove"_qs,
              x(from),
              y(from),
              u"mousedown"_qs,
              u"1"_qs,
              u"sleep"_qs,
              pause,
              u"mousemove"_qs,
              x(start),
              y(start),
              u"sleep"_qs,
              pause,
              u"mousemove"_qs,
              x(half),
              y(half),
              u"sleep"_qs,
              pause,
              u"mousemove"_qs,
              x(to - QPoint(2, 0)),
              y(to),
              u"sleep"_qs,
              pause,
              u"mousemove"_qs,
              x(to),
              y(to),
              u"sleep"_qs,
              u"0.4"_qs,
              u"mouseup"_qs,
              u"1"_qs});
    }

    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<Library> library_;
    std::unique_ptr<MainWindow> window_;
    QProcess peer_;
    QByteArray said_;
};

QTEST_MAIN(DragsTest)
#include "DragsTest.moc"
