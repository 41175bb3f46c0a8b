#include "platform/RecentDocuments.h"
#include "support/ScratchFolder.h"

#include <QRegularExpression>
#include <QTest>

class RecentFilesListTest : public QObject {
    Q_OBJECT

private slots:
    void keepsTheBookmarksOfOthers()
    {
        ScratchFolder::write(path_, R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks">
<bookmark href="file:///a%20%C3%A9.mp3" visited="1999-01-01T00:00:00Z"/>
<bookmark href="file:///b.txt" added="2000-01-01T00:00:00Z"><title>Ünd &amp; so</title><info><metadata owner="o">
<bookmark:groups><bookmark:group>Office</bookmark:group></bookmark:groups></metadata></info></bookmark></xbel>)");
        for (const auto& path : {u"/a é.mp3"_qs, u"/c#1.m4a"_qs})
            list_.noteNewRecentDocument(path);
        QTRY_COMPARE(addresses(), u"file:///a%20%C3%A9.mp3 file:///b.txt file:///c%231.m4a"_qs);
        const QByteArray text = ScratchFolder::contents(path_);
        for (const auto* kept : {"added=\"2000-01-01T00:00:00Z\"", "<title>Ünd &amp; so</title>", ">Office<"})
            QVERIFY2(text.contains(kept), text);
        QVERIFY(!text.contains("1999") && text.count("name=\"Sonvika\"") == 2
                && text.contains("type=\"audio/mpeg\""));
    }

    void leavesADamagedListAlone()
    {
        const QByteArray damaged = "<xbel><bookmark href=\"file:///a.mp3\"/><bookmark href=";
        ScratchFolder::write(path_, damaged);
        list_.noteNewRecentDocument(u"/b.mp3"_qs);
        QCoreApplication::processEvents();
        QCOMPARE(ScratchFolder::contents(path_), damaged);
    }

    void listsTheNewestOfABatch()
    {
        QVERIFY(QFile::remove(path_));
        QString newest;
        for (int i = 0; i <= RecentFilesList::batchLimit; ++i) {
            list_.noteNewRecentDocument(u"/%1.mp3"_qs.arg(i));
            // The first one goes, and this one is noted again.
            if (i > 0 && i != 5)
                newest += u"file:///%1.mp3 "_qs.arg(i);
        }
        list_.noteNewRecentDocument(u"/5.mp3"_qs);
        QTRY_VERIFY(QFile::exists(path_));
        QCOMPARE(addresses(), newest + u"file:///5.mp3"_qs);
        QCOMPARE(QFile::permissions(path_) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

private:
    QString addresses() const
    {
        QStringList found;
        static const QRegularExpression bookmark(u"<bookmark [^>]*href=\"([^\"]*)\""_qs);
        const QString text = QString::fromUtf8(ScratchFolder::contents(path_));
        for (auto match = bookmark.globalMatch(text); match.hasNext();)
            found.append(match.next().captured(1));
        return found.join(u' ');
    }

    const ScratchFolder folder_;
    const QString path_ = folder_.path(u"recently-used.xbel"_qs);
    RecentFilesList list_{path_};
};

QTEST_GUILESS_MAIN(RecentFilesListTest)
#include "RecentFilesListTest.moc"
