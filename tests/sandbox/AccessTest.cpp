#include "fakes/FakePlatform.h"
#include "platform/Bookmark.h"
#include "platform/PathBytes.h"
#include "platform/UserDefaults.h"
#include "sandbox/BookmarksManager.h"
#include "sandbox/OpenPanelManager.h"
#include "sandbox/PermissionManager.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QGuiApplication>

#include <optional>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace {

template <class Call>
QString thrownBy(Call call)
{
    try {
        call();
    } catch (const OpenPanelError& error) {
        return u"panel "_qs + QString::number(error.reason());
    } catch (const Bookmark::Error&) {
        return u"bookmark"_qs;
    } catch (const std::system_error& error) {
        return u"system "_qs + QString::number(error.code().value());
    } catch (const std::exception& error) {
        return QLatin1String(error.what());
    }
    return u"nothing"_qs;
}

} // namespace

class AccessTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        defaults_ = std::make_unique<UserDefaults>(folder_->path(u"settings.ini"_qs));
        store_ = std::make_unique<BookmarksManager>(*defaults_);
    }
    void cleanup()
    {
        store_.reset();
        // Writes what is left to be written.
        defaults_.reset();
    }

    // stored paths | asked for | found
    void nearestEnclosingFolderCovers_data()
    {
        addRows({"/a /a/Music | /a/Music/Album/x.mp3 | /a/Music", "/a /a/Music | /a/Videos/x | /a",
                 "/ | /anything/at/all | /", "/a/Music | /a/Musicals/x.mp3 | ", "/a/x | /a/x | /a/x", " | /a | ",
                 "/a/x | /a | ", "/ | / | /"});
    }
    void nearestEnclosingFolderCovers()
    {
        const auto [stored, path, expected] = row<3>();
        QVariantMap map;
        for (const auto& name : stored.split(u' ', Qt::SkipEmptyParts))
            map[name] = name.toUtf8();
        defaults_->setObject(DefaultsKey::bookmarks, map);
        QCOMPARE(QString::fromUtf8(store_->storedBookmarkData(path).value_or(QByteArray())), expected);
    }

    void damagedMapsReadAsEmpty()
    {
        const QVariantMap mixed{{u"/a"_qs, QByteArray("x")}, {u"/b"_qs, 7}};
        for (const QVariant& value : {QVariant(mixed), QVariant(u"text"_qs), QVariant(QStringList{u"/a"_qs})}) {
            defaults_->setObject(DefaultsKey::bookmarks, value);
            QVERIFY(store_->bookmarks().isEmpty() && !store_->resolvedURL(u"/a"_qs));
            QCOMPARE(defaults_->objectForKey(DefaultsKey::bookmarks), value);
        }
    }

    void bookmarksTakeNamesOfAnyBytes()
    {
        const QByteArray odd = PathBytes::encode(folder_->path(u"odd"_qs)) + '\xff';
        QCOMPARE(::mkdir(odd.constData(), 0700), 0);
        const auto found = store_->resolveBookmark(store_->bookmarkData(PathBytes::decode(odd)));
        ::rmdir(odd.constData());
        QCOMPARE(PathBytes::encode(found.value_or(QString())), odd);
    }

    void bookmarksFindFoldersAndNoticeOthers()
    {
        const QString path = makeFolder(u"music"_qs);
        QVERIFY(QFile::link(path, folder_->path(u"link"_qs)));
        store_->ensureBookmark(folder_->path(u"link"_qs));
        const QString canonical = QFileInfo(path).canonicalFilePath();
        QCOMPARE(store_->bookmarkedURLs(), QSet{canonical});
        store_->ensureBookmark(canonical + u"/album"_qs);
        QCOMPARE(store_->bookmarks().size(), 1);
        defaults_->synchronize();
        UserDefaults again(folder_->path(u"settings.ini"_qs));
        QCOMPARE(BookmarksManager(again).resolvedURL(canonical + u"/album/x.mp3"_qs), canonical);

        // Another folder in its place makes it stale; asking for one inside adds a nearer one.
        QVERIFY(QDir().rename(path, folder_->path(u"moved"_qs)));
        const QString inside = makeFolder(u"music/album"_qs);
        QVERIFY(!store_->resolvedURL(inside));
        store_->ensureBookmark(inside);
        QCOMPARE(store_->resolvedURL(inside + u"/x"_qs), QFileInfo(inside).canonicalFilePath());
        store_->removeBookmark(inside + u"/x"_qs);
        store_->storeBookmark(store_->bookmarks()[canonical]);
        QCOMPARE(store_->bookmarks().size(), 2);

        // Nothing in its place is an error, and changes nothing.
        QVERIFY(QDir(path).removeRecursively());
        QCOMPARE(thrownBy([&] { store_->ensureBookmark(canonical); }), u"bookmark"_qs);
        QCOMPARE(thrownBy([&] { store_->storeBookmark("junk"); }), u"bookmark"_qs);
        QCOMPARE(store_->bookmarks().size(), 2);
        store_->removeBookmark(canonical);
        QCOMPARE(store_->bookmarks().size(), 1);
    }

    // the folder | what has a bookmark | panel answer | keeps grants | result | panels in two calls | bookmarks then
    void waysThroughPerformWithAccess_data()
    {
        addRows({"readable |  |  | yes | true | 0 | 0", "readable |  |  | yes | failed | 0 | 0",
                 "missing |  |  | yes | system 2 | 0 | 0", "locked | . |  | yes | true | 0 | 1",
                 "locked | . |  | no | true | 0 | 1", "locked | . |  | yes | failed | 0 | 1",
                 "locked | locked |  | yes | false | 0 | 1", "locked |  | readable | yes | true | 2 | 1",
                 "locked |  | readable | no | true | 2 | 0", "locked |  | locked | yes | false | 1 | 1",
                 "locked |  | missing | yes | bookmark | 2 | 0", "locked |  | cancel | yes | panel 0 | 2 | 0",
                 "locked |  | stop | yes | panel 1 | 2 | 0", "locked |  | abort | yes | panel 2 | 2 | 0"});
    }
    void waysThroughPerformWithAccess()
    {
        const auto [item, stored, answer, keeps, result, panels, bookmarks] = row<7>();
        makeFolder(u"readable"_qs);
        makeFolder(u"locked"_qs);
        if (!stored.isEmpty())
            store_->ensureBookmark(folder_->path(stored));
        QFile::setPermissions(folder_->path(u"locked"_qs), {});
        FakeFilePanels filePanels;
        const QMap<QString, AccessPanelAnswer::Response> responses{{u"cancel"_qs, AccessPanelAnswer::Cancel},
                                                                   {u"stop"_qs, AccessPanelAnswer::Stop},
                                                                   {u"abort"_qs, AccessPanelAnswer::Abort}};
        filePanels.access = {responses.value(answer, AccessPanelAnswer::OK), folder_->path(answer)};
        OpenPanelManager panel(filePanels);
        PermissionManager manager(panel, *store_);
        manager.setPersistBookmarks(keeps == u"yes");
        const bool runs = QStringList{u"true"_qs, u"false"_qs, u"failed"_qs}.contains(result);
        int ran = 0;
        // Twice: whatever happens, the lock is free again.
        for (const int round : {1, 2}) {
            bool started = false;
            const QString thrown = thrownBy([&, failing = result == u"failed"] {
                started = manager.performWithAccess(folder_->path(item), [&] {
                    ++ran;
                    if (failing)
                        throw std::runtime_error("failed");
                });
            });
            QCOMPARE(thrown == u"nothing" ? QVariant(started).toString() : thrown, result);
            QCOMPARE(ran, runs ? round : 0);
        }
        QCOMPARE(filePanels.accessRequests, QStringList(panels.toInt(), folder_->path({})));
        QCOMPARE(store_->bookmarks().size(), bookmarks.toInt());
        QFile::setPermissions(folder_->path(u"locked"_qs), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

private:
    QString makeFolder(const QString& name) const
    {
        const QString path = folder_->path(name);
        QDir().mkpath(path);
        return path;
    }

    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<BookmarksManager> store_;
};

QTEST_GUILESS_MAIN(AccessTest)
#include "AccessTest.moc"
