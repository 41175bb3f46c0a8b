#include "artwork/ui/AlbumArtView.h"
#include "artwork/ui/DropView.h"
#include "library/RecordColumns.h"
#include "library/ui/QuickLookTableView.h"
#include "support/OpenWindow.h"
#include "support/Rows.h"

#include <QProcess>
#include <QUrl>

/// Drags between this process, which is Sonvika, and another one, with the pointer of a real display.
class DragsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        open_.emplace(u"v24.mp3 tagged.m4a untagged.mp3"_qs);
        open_->window.setGeometry(0, 0, 1000, 700);
        open_->window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&open_->window));
        open_->list.selection().setRows({0, 1});
        QTRY_VERIFY(!well().imageView().image().isNull());
    }
    void cleanup()
    {
        peer_.kill();
        peer_.waitForFinished();
    }

    // from | to | the other program | what it says; a silent one has ended | the files it has then | the list then
    void drags_data()
    {
        addRows({"row 0 | peer | target FOLDER/received | copied | tagged.m4a v24.mp3",
                 "row 0 | row 2 |  |  |  | untagged.mp3 v24.mp3 tagged.m4a",
                 "peer | well | source text/uri-list=FOLDER/picture | taken",
                 "peer | well | source text/plain=FOLDER/cover.png | refused", "peer | well | source image/png=die",
                 "peer | well | source text/uri-list=FOLDER/audio | refused",
                 "peer | row 1 | source text/uri-list=FOLDER/picture | refused"});
    }
    void drags()
    {
        const auto [from, to, peer, said, received, list] = row<6>();
        QVERIFY(peer.isEmpty() || startPeer(peer.split(u' ')));
        QList<QByteArray> arts = open_->arts();
        drag(place(from), place(to));
        QTRY_VERIFY_WITH_TIMEOUT(said.isEmpty() ? peer_.state() == QProcess::NotRunning : peerHasSaid(said),
                                 patience);
        if (said == u"taken")
            arts[0] = arts[1] = ScratchFolder::fixture(u"cover.png"_qs);
        QTRY_COMPARE(open_->fileNames(), list.isEmpty() ? u"v24.mp3 tagged.m4a untagged.mp3"_qs : list);
        if (list.isEmpty())
            QTRY_COMPARE(open_->arts(), arts);
        QVERIFY(!well().canDrag());
        const QDir folder(open_->folder.path(u"received"_qs));
        QCOMPARE(folder.entryList(QDir::Files).join(u' '), received);
        for (const auto& name : folder.entryList(QDir::Files)) {
            for (const auto& path : {folder.filePath(name), open_->folder.path(name)})
                QCOMPARE(ScratchFolder::contents(path), ScratchFolder::fixture(name));
        }
    }

private:
    static constexpr int patience = 15'000;

    DropView& well() { return *open_->window.findChild<DropView*>(); }
    /// The middle of the art well, of a row or of the other program's window.
    QPoint place(const QString& name)
    {
        if (name == u"peer")
            return {1150, 200};
        if (name == u"well")
            return well().mapToGlobal(well().rect().center());
        const auto& table = *open_->window.findChild<QuickLookTableView*>();
        const QModelIndex cell = open_->list.index(name.section(u' ', 1).toInt(), RecordColumns::Title);
        return table.viewport()->mapToGlobal(table.visualRect(cell).center() + QPoint(0, 6));
    }
    /// @param arguments "target" or "source", and where to put files or what to offer.
    bool startPeer(QStringList arguments)
    {
        const auto& folder = open_->folder;
        QDir().mkdir(folder.path(u"received"_qs));
        for (const auto& [name, file] : {std::pair{u"picture"_qs, u"cover.png"_qs}, {u"audio"_qs, u"lame.mp3"_qs}})
            ScratchFolder::write(folder.path(name), QUrl::fromLocalFile(folder.copy(file)).toEncoded() + "\r\n");
        arguments.replaceInStrings(u"FOLDER"_qs, folder.path(u"."_qs));
        said_.clear();
        peer_.start(QStringLiteral(DRAG_PEER), {arguments[0], u"1050"_qs, u"100"_qs, arguments[1]});
        return QTest::qWaitFor([this] { return peerHasSaid(u"shown"_qs); }, patience);
    }
    bool peerHasSaid(const QString& line)
    {
        said_ += peer_.readAllStandardOutput();
        return said_.split('\n').contains(line.toLatin1());
    }
    /// Moves the pointer while this process goes on.
    static void drag(const QPoint& from, const QPoint& to)
    {
        QString script = u"mousemove %1 %2 mousedown 1"_qs.arg(from.x()).arg(from.y());
        for (const auto& stop : {from + (to - from) / 20, (from + to) / 2, to - QPoint(2, 0), to})
            script += u" sleep 0.15 mousemove %1 %2"_qs.arg(stop.x()).arg(stop.y());
        QProcess pointer;
        pointer.start(u"xdotool"_qs, (script + u" sleep 0.4 mouseup 1"_qs).split(u' '));
        QVERIFY(QTest::qWaitFor([&] { return pointer.state() == QProcess::NotRunning; }, patience));
    }

    std::optional<OpenWindow> open_;
    QProcess peer_;
    QByteArray said_;
};

QTEST_MAIN(DragsTest)
#include "DragsTest.moc"
