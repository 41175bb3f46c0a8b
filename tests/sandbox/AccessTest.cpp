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

/// A store that answers as told.
struct FakeBookmarks : BookmarksManagerProtocol {
    void clearBookmarks() override {}
    QByteArray bookmarkData(const QString&) const override { return {}; }
    QByteArray securityScopedBookmarkData(const QString&) const override { return {}; }
    std::optional<QString> resolveBookmark(const QByteArray&) const override { return {}; }
    std::optional<QString> resolvedURL(const QString&) const override
    {
        if (resolvingFails)
            throw Bookmark::Error("resolving");
        return resolved;
    }
    std::optional<QByteArray> storedBookmarkData(const QString&) const override { return {}; }
    void ensureBookmark(const QString& path) override
    {
        if (ensuringFails)
            throw Bookmark::Error("ensuring");
        ensured.append(path);
    }
    void storeBookmark(const QByteArray&) override {}
    void removeBookmark(const QString&) override {}

    std::optional<QString> resolved;
    bool resolvingFails = false;
    bool ensuringFails = false;
    QStringList ensured;
};

template <class Call>
QString thrownBy(Call call)
{
    try {
        call();
    } catch (const OpenPanelError& error) {
        return u"panel "_qs + QString::number(error.reason());
    } catch (const Bookmark::Error& error) {
        return u"bookmark "_qs + QLatin1String(error.what());
    } catch (const std::system_error& error) {
        return u"system "_qs + QString::number(error.code().value());
    } catch (const std::exception& error) {
        return QLatin1String(error.what());
    }
    return {};
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
            QVERIFY(store_->bookmarks().isEmpty() && store_->bookmarkedURLs().isEmpty());
            QVERIFY(!store_->resolvedURL(u"/a"_qs));
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
        QCOMPARE(store_->resolvedURL(canonical + u"/album/x.mp3"_qs), canonical);
        store_->ensureBookmark(canonical + u"/album"_qs);
        QCOMPARE(store_->bookmarks().size(), 1);
        // The map survives in the file.
        defaults_->synchronize();
        UserDefaults again(folder_->path(u"settings.ini"_qs));
        QCOMPARE(BookmarksManager(again).bookmarks(), store_->bookmarks());

        // Another folder in its place makes it stale; asking for one inside adds a nearer one.
        QVERIFY(QDir().rename(path, folder_->path(u"moved"_qs)));
        const QString inside = makeFolder(u"music/album"_qs);
        QVERIFY(!store_->resolvedURL(inside));
        store_->ensureBookmark(inside);
        QCOMPARE(store_->bookmarks().size(), 2);
        QCOMPARE(store_->resolvedURL(inside + u"/x"_qs), QFileInfo(inside).canonicalFilePath());
        store_->removeBookmark(inside + u"/x"_qs);
        QCOMPARE(store_->bookmarks().size(), 2);
        store_->storeBookmark(store_->bookmarks()[canonical]);
        QCOMPARE(store_->bookmarks().size(), 2);

        // Nothing in its place is an error, and changes nothing.
        QVERIFY(QDir(path).removeRecursively());
        QVERIFY(thrownBy([&] { store_->ensureBookmark(canonical); }).startsWith(u"bookmark"));
        QVERIFY(thrownBy([&] { store_->bookmarkData(path); }).startsWith(u"bookmark"));
        QVERIFY(thrownBy([&] { store_->storeBookmark("junk"); }).startsWith(u"bookmark"));
        QCOMPARE(store_->bookmarks().size(), 2);
        store_->removeBookmark(canonical);
        QCOMPARE(store_->bookmarks().size(), 1);
        store_->clearBookmarks();
        QVERIFY(store_->bookmarks().isEmpty());
    }

    // the folder | resolved bookmark | panel answer | keeps grants | fault | result | panels | kept | runs
    void waysThroughPerformWithAccess_data()
    {
        addRows({"readable |  |  | yes |  | true | 0 |  | 1", "readable |  |  | yes | operation | failed | 0 |  | 1",
                 "missing |  |  | yes |  | system 2 | 0 |  | 0",
                 "locked | readable |  | yes |  | true | 0 | readable | 1",
                 "locked | locked |  | yes |  | false | 0 | locked | 1",
                 "locked | readable |  | no |  | true | 0 |  | 1",
                 "locked |  | readable | yes |  | true | 1 | readable | 1",
                 "locked |  | locked | no |  | false | 1 |  | 1", "locked |  | cancel | yes |  | panel 0 | 1 |  | 0",
                 "locked |  | stop | yes |  | panel 1 | 1 |  | 0", "locked |  | abort | yes |  | panel 2 | 1 |  | 0",
                 "locked |  |  | yes | resolving | bookmark resolving | 0 |  | 0",
                 "locked |  | readable | yes | ensuring | bookmark ensuring | 1 |  | 0",
                 "locked | readable |  | yes | operation | failed | 0 | readable | 1"});
    }
    void waysThroughPerformWithAccess()
    {
        const auto [item, resolved, answer, keeps, fault, result, panels, kept, runs] = row<9>();
        makeFolder(u"readable"_qs);
        QFile::setPermissions(makeFolder(u"locked"_qs), {});
        FakeBookmarks bookmarks;
        if (!resolved.isEmpty())
            bookmarks.resolved = folder_->path(resolved);
        bookmarks.resolvingFails = fault == u"resolving";
        bookmarks.ensuringFails = fault == u"ensuring";
        FakeFilePanels filePanels;
        const QStringList responses{u""_qs, u"cancel"_qs, u"stop"_qs, u"abort"_qs};
        const auto response = responses.indexOf(answer);
        filePanels.access = {static_cast<AccessPanelAnswer::Response>(std::max<qsizetype>(response, 0)),
                             folder_->path(answer)};
        OpenPanelManager panel(filePanels);
        PermissionManager manager(panel, bookmarks);
        manager.setPersistBookmarks(keeps == u"yes");
        int ran = 0;
        // Twice: whatever happens, the lock is free again.
        for (const int round : {1, 2}) {
            std::optional<bool> started;
            const QString thrown = thrownBy([&, failing = fault == u"operation"] {
                started = manager.performWithAccess(folder_->path(item), [&] {
                    ++ran;
                    if (failing)
                        throw std::runtime_error("failed");
                });
            });
            QCOMPARE(started ? (*started ? u"true"_qs : u"false"_qs) : thrown, result);
            QCOMPARE(ran, round * runs.toInt());
            QCOMPARE(filePanels.accessRequests.size(), round * panels.toInt());
        }
        QCOMPARE(bookmarks.ensured.value(0), kept.isEmpty() ? QString() : folder_->path(kept));
        QCOMPARE(filePanels.accessRequests.value(0, folder_->path({})), folder_->path({}));
        QFile::setPermissions(folder_->path(u"locked"_qs), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void oneGrantServesLaterCalls()
    {
        const QString path = makeFolder(u"locked"_qs);
        FakeFilePanels filePanels;
        filePanels.access = {AccessPanelAnswer::OK, path};
        OpenPanelManager panel(filePanels);
        PermissionManager manager(panel, *store_);
        QFile::setPermissions(path, {});
        QVERIFY(manager.needsPermission(path));
        for (int i = 0; i < 3; ++i)
            QVERIFY(!manager.performWithAccess(path, [] {}));
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(filePanels.accessRequests.size(), 1);
        QVERIFY(!manager.needsPermission(path));
        QCOMPARE(manager.requestPermission(path), path);
    }

    void panelAsksInTheGivenWords()
    {
        FakeFilePanels filePanels;
        QCoreApplication::setApplicationName(u"Sonvika"_qs);
        const OpenPanelManager panel(filePanels);
        QCOMPARE(panel.title, u"Access permissions required"_qs);
        QCOMPARE(panel.message, u"Please allow 'Sonvika' to access this file or folder to continue."_qs);
        QCOMPARE(panel.prompt, u"Allow"_qs);
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
