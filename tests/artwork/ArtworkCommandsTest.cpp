#include "fakes/Library.h"
#include "platform/PathBytes.h"
#include "support/ConsoleCapture.h"
#include "support/OtherReaders.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"
#include "tagengine/TaglibWrapper.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QSignalSpy>
#include <QUrl>

#include <cstdio>
#include <iostream>

class ArtworkCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        library_ = std::make_unique<Library>();
        for (const auto& fixture : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"untagged.mp3"_qs})
            QVERIFY(library_->loader.openPath(folder_->copy(fixture)));
        library_->controller.selectAll();
    }
    void cleanup()
    {
        library_.reset();
        folder_.reset();
    }

    // the chosen file | what it holds | what is posted
    void changesTheArtOfEverySelectedFile_data()
    {
        addRows({"cover.jpg | jpg", "cover.png | png", "cover.jpg | png", "cover.tiff | big",
                 "cover.jpeg | jpg | Unsupported file type", "COVER.JPG | jpg | Unsupported file type",
                 "cover.mp3 | jpg | Unsupported file type", "cover.jpg | text | Unable to load image data: ",
                 "cover.jpg | empty | Unable to load image data: ", "cover.jpg | huge | Unable to load image data: ",
                 "cover.jpg | missing | Unable to load image data: ",
                 "cover.jpg | unreadable | Unable to load image data: ",
                 "cover.jpg | folder | Unable to load image data: "});
    }
    void changesTheArtOfEverySelectedFile()
    {
        const auto [name, contents, posted] = row<3>();
        const QString path = make(name, contents);
        const auto before = arts();
        library_->panels.files = {path, folder_->path(u"ignored.jpg"_qs)};
        library_->controller.updateImage();
        if (posted.isEmpty()) {
            const QByteArray bytes = ScratchFolder::contents(path);
            QCOMPARE(arts(), QList<QByteArray>(3, bytes));
            QCOMPARE(library_->art.bytes(), bytes);
            QCOMPARE(library_->notifier.posted, QStringList());
        } else {
            QCOMPARE(library_->notifier.posted.size(), 1);
            QVERIFY2(library_->notifier.posted.first().startsWith(u"Sonvika: "_qs + posted),
                     qPrintable(library_->notifier.posted.first()));
            QCOMPARE(arts(), before);
        }
    }

    void goesOnBehindAFileThatFails()
    {
        ScratchFolder::write(library_->list.content()[1]->path, "no audio");
        const QByteArray cover = ScratchFolder::fixture(u"cover.png"_qs);
        library_->artwork.setArtFromFile(folder_->copy(u"cover.png"_qs));
        QCOMPARE(arts(), QList<QByteArray>({cover, {}, cover}));
        QCOMPARE(library_->notifier.posted, QStringList{u"Sonvika: Unable to save album art"_qs});
        QCOMPARE(ScratchFolder::contents(library_->list.content()[1]->path), "no audio");
        library_->controller.deleteImage();
        QCOMPARE(arts(), QList<QByteArray>(3));
        QCOMPARE(library_->notifier.posted.size(), 1);
        QVERIFY(!library_->art.isShown());
    }

    void writesNothingWithoutASelection()
    {
        const auto before = arts();
        library_->controller.deselectAll();
        library_->artwork.setArtFromFile(folder_->copy(u"cover.png"_qs));
        library_->controller.deleteImage();
        QCOMPARE(arts(), before);
        QVERIFY(!library_->artworkDrops.accepts(*pictureFile()));
    }

    // selection | proposed name | path | what is there then
    void savesTheShownArt_data()
    {
        addRows({"0 | Blue Window | new.png | png", "0 1 | Blue Window | new.jpeg | mjpeg",
                 "0 | Blue Window | new.gif | gif",
                 "0 | Blue Window | missing/new.png | Failed to save to image. url: file://",
                 "0 | Blue Window | readonly/new.png | Failed to save to image. url: file://",
                 "2 | Title | nothing.png"});
    }
    void savesTheShownArt()
    {
        const auto [selection, name, target, expected] = row<4>();
        QList<int> rows;
        for (const auto& number : selection.split(u' '))
            rows.append(number.toInt());
        library_->list.selection().setRows(rows);
        QDir(folder_->path({})).mkpath(u"readonly"_qs);
        QFile::setPermissions(folder_->path(u"readonly"_qs), QFile::ReadOwner | QFile::ExeOwner);
        const QString path = folder_->path(target);
        QString proposed;
        library_->panels.save = [&](const SavePanelRequest& request) {
            proposed = request.name;
            request.chosen(path);
        };
        library_->controller.saveImage();
        QCOMPARE(proposed, name);
        if (expected.startsWith(u"Failed")) {
            QCOMPARE(library_->notifier.posted.size(), 1);
            QVERIFY(library_->notifier.posted.first().startsWith(u"Sonvika: "_qs + expected));
            QVERIFY(library_->notifier.posted.first().endsWith(target));
            QVERIFY(library_->notifier.posted.first().contains(u"/sonvika%20%C3%B6%20"));
        } else if (expected.isEmpty()) {
            QVERIFY(!QFile::exists(path) && library_->notifier.posted.isEmpty());
        } else {
            QCOMPARE(codecOf(path), expected);
        }
    }

    void revealsTheFilesThatAreThere()
    {
        QVERIFY(QFile::remove(library_->list.content()[1]->path));
        const QByteArray odd = QFile::encodeName(folder_->path(u"odd"_qs)) + '\xff';
        QCOMPARE(std::rename(QFile::encodeName(library_->list.content()[2]->path).constData(), odd.constData()), 0);
        library_->list.content()[2]->path = PathBytes::decode(odd);
        library_->controller.showInFinder();
        std::remove(odd.constData());
        QCOMPARE(library_->fileBrowser.revealed,
                 QStringList({library_->list.content()[0]->path, library_->list.content()[2]->path}));
    }

    // what the source offers | what becomes the art
    void takesPicturesFromDragsAndTheClipboard_data()
    {
        addRows({"file png | file png", "jpeg bytes | jpeg bytes", "png bytes | png bytes",
                 "jpeg bytes, image | jpeg bytes", "image | encoded", "data address | png bytes",
                 "bytes that are no picture | Unable to load image data: ", "text | refused", "audio | refused",
                 "web address | refused", "web address, png bytes | png bytes", "svg | refused",
                 "vanished source | nothing"});
    }
    void takesPicturesFromDragsAndTheClipboard()
    {
        const auto [offer, expected] = row<2>();
        const QByteArray jpeg = ScratchFolder::fixture(u"cover.jpg"_qs);
        const QByteArray png = ScratchFolder::fixture(u"cover.png"_qs);
        for (const bool drag : {true, false}) {
            cleanup();
            init();
            const auto before = arts();
            const auto data = offering(offer, jpeg, png);
            QCOMPARE(library_->artworkDrops.accepts(*data), expected != u"refused");
            const bool taken = expected != u"refused" && expected != u"nothing";
            if (drag)
                QCOMPARE(library_->artworkDrops.performDragOperation(*data), taken);
            else
                library_->artwork.pasteImage(*data);
            if (!taken) {
                QCOMPARE(arts(), before);
            } else if (expected.startsWith(u"Unable")) {
                QTRY_COMPARE(library_->notifier.posted.size(), 1);
                QVERIFY(library_->notifier.posted.first().startsWith(u"Sonvika: "_qs + expected));
                QCOMPARE(arts(), before);
            } else if (expected == u"encoded") {
                QTRY_VERIFY(arts()[2].startsWith("\x89PNG"));
                QCOMPARE(QImage::fromData(arts()[0]).convertToFormat(QImage::Format_RGB32),
                         QImage::fromData(png).convertToFormat(QImage::Format_RGB32));
            } else {
                QTRY_COMPARE(arts(), QList<QByteArray>(3, expected.startsWith(u"jpeg") ? jpeg : png));
            }
        }
    }

    void cancelingEndsAllOfADrop()
    {
        QMimeData pictures;
        pictures.setUrls({QUrl::fromLocalFile(folder_->copy(u"cover.png"_qs)),
                          QUrl::fromLocalFile(folder_->copy(u"cover.jpg"_qs))});
        connect(&library_->art, &ShownArt::fadeInWanted, &library_->monitor, &LongWork::cancel);
        const QSignalSpy stopped(&library_->monitor, &LongWork::stopped);
        QVERIFY(library_->artworkDrops.performDragOperation(pictures));
        QTRY_COMPARE(stopped.size(), 1);
        QCOMPARE(arts()[0], ScratchFolder::fixture(u"cover.png"_qs));
    }

    void saysWhenDroppedDataCannotBeReceived()
    {
        const auto data = offering(u"png bytes"_qs, {}, ScratchFolder::fixture(u"cover.png"_qs));
        const auto before = arts();
        qputenv("TMPDIR", QFile::encodeName(folder_->path(u"missing"_qs)));
        const ConsoleCapture console(std::cout);
        QVERIFY(library_->artworkDrops.performDragOperation(*data));
        QMimeData audio;
        audio.setData(u"audio/mpeg"_qs, ScratchFolder::fixture(u"lame.mp3"_qs));
        QVERIFY(library_->drops.validateDrop(audio, false) == ListDrops::Operation::Copy);
        library_->drops.acceptDrop(audio, false, 0);
        audio.setData(u"audio/mpeg"_qs, {});
        library_->drops.acceptDrop(audio, false, 0);
        QTRY_COMPARE(library_->notifier.posted.size(), 2);
        qunsetenv("TMPDIR");
        for (const auto& posted : library_->notifier.posted)
            QVERIFY(posted.startsWith(u"Sonvika: Couldn't recieve audiofile drop: "_qs));
        QTRY_COMPARE(library_->notifier.noted.size(), 3);
        QVERIFY(console.text().contains(u"couldn't recieve image drag: "_qs));
        QCOMPARE(arts(), before);
    }

    void addsDroppedAudioWithoutAFile()
    {
        QMimeData audio;
        audio.setData(u"audio/mpeg"_qs, ScratchFolder::fixture(u"lame.mp3"_qs));
        library_->drops.acceptDrop(audio, false, 0);
        QTRY_COMPARE(library_->list.rowCount(), 4);
        const QString path = library_->list.content()[3]->path;
        QCOMPARE(QFileInfo(path).absolutePath(), library_->dropFolder.destinationURL());
        QVERIFY(path.contains(u"/Drops/"_qs) && path.endsWith(u".mp3"_qs));
        QCOMPARE(QFileInfo(library_->dropFolder.destinationURL()).permissions() & QFile::Permissions(0x0fff),
                 QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
        QVERIFY(QFile::remove(path));
    }

    // selection | title of the first file | format | name
    void promisesAFileNamedByTheTitle_data()
    {
        addRows({"0 | Intro | 1 | Intro.png", "0 1 | Intro | 0 | Various.jpg", "0 | - | 3 | AlbumArt.gif",
                 "0 | AC/DC: Live | 9 | AC_DC: Live.jpg", "0 | .hidden | 2 | .hidden.tiff"});
    }
    void promisesAFileNamedByTheTitle()
    {
        const auto [selection, title, format, name] = row<4>();
        library_->list.content()[0]->title = title == u"-" ? QString() : title;
        library_->list.selection().setRows(selection.size() > 1 ? QList{0, 1} : QList{0});
        library_->defaults.setInt(DefaultsKey::fileTypeIndex, format.toInt());
        QCOMPARE(library_->artworkDrops.fileNameForType(), name);
        const auto promise = library_->artworkDrops.pasteboardWriterForDropView();
        QCOMPARE(promise->formats(), QStringList{u"text/uri-list"_qs});
        const QList<QUrl> urls = promise->urls();
        QCOMPARE(urls.size(), 1);
        QCOMPARE(urls.first().fileName(), name);
        QVERIFY(!QImage(urls.first().toLocalFile()).isNull());
        QCOMPARE(promise->urls(), urls);
        library_->list.content()[0]->title = QString(300, u'ö');
        QVERIFY(QFile::encodeName(library_->artworkDrops.fileNameForType()).size() < 255);
    }

    void artThatCannotBeWrittenIsNotPromised()
    {
        library_->list.selection().setRows({0});
        const QString elsewhere = folder_->path(u"elsewhere"_qs);
        QVERIFY(QDir().mkpath(elsewhere) && QDir::setCurrent(elsewhere));
        qputenv("TMPDIR", QFile::encodeName(folder_->path(u"missing"_qs)));
        QVERIFY(library_->artworkDrops.pasteboardWriterForDropView()->urls().isEmpty());
        qunsetenv("TMPDIR");
        QVERIFY(QDir(elsewhere).isEmpty());
        QVERIFY(QDir::setCurrent(u"/"_qs));
        QCOMPARE(library_->artworkDrops.pasteboardWriterForDropView()->urls().size(), 1);

        library_->art.show(ScratchFolder::fixture(u"cover.png"_qs).first(60));
        QVERIFY(library_->art.isShown());
        QVERIFY(library_->artworkDrops.pasteboardWriterForDropView()->urls().isEmpty());
        QCOMPARE(library_->notifier.posted.size(), 1);
    }

    void copiesTheEncodedArt()
    {
        library_->list.selection().setRows({0});
        library_->controller.copyImage();
        const auto* clipboard = QGuiApplication::clipboard()->mimeData();
        const QByteArray cover = ScratchFolder::fixture(u"cover.jpg"_qs);
        QCOMPARE(clipboard->data(u"image/jpeg"_qs), cover);
        QCOMPARE(qvariant_cast<QImage>(clipboard->imageData()).size(), QImage::fromData(cover).size());
        library_->list.selection().setRows({2});
        library_->controller.pasteImage();
        QCOMPARE(arts()[2], cover);
        library_->controller.deleteImage();
        library_->controller.copyImage();
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->data(u"image/jpeg"_qs), cover);
    }

private:
    QList<QByteArray> arts() const
    {
        QList<QByteArray> found;
        for (const auto& record : library_->list.content())
            found.append(TaglibWrapper::getImageData(record->path, record->fileType).value_or(QByteArray()));
        return found;
    }
    QString make(const QString& name, const QString& contents) const
    {
        const QString path = folder_->path(u"chosen/"_qs + name);
        QDir().mkpath(contents == u"folder" ? path : folder_->path(u"chosen"_qs));
        const auto write = [&](const QByteArray& bytes) { ScratchFolder::write(path, bytes); };
        if (contents == u"jpg" || contents == u"png" || contents == u"unreadable")
            write(ScratchFolder::fixture(contents == u"png" ? u"cover.png"_qs : u"cover.jpg"_qs));
        else if (contents == u"big")
            write(ScratchFolder::fixture(u"cover.png"_qs) + QByteArray(10 * 1024 * 1024, 'x'));
        else if (contents == u"text")
            write("no picture");
        else if (contents == u"empty")
            write({});
        else if (contents == u"huge") {
            write(ScratchFolder::fixture(u"cover.jpg"_qs));
            QFile::resize(path, 200 * 1024 * 1024);
        }
        if (contents == u"unreadable")
            QFile::setPermissions(path, {});
        return path;
    }
    std::unique_ptr<QMimeData> pictureFile() const
    {
        auto data = std::make_unique<QMimeData>();
        data->setUrls({QUrl::fromLocalFile(folder_->copy(u"cover.png"_qs, u"dropped.png"_qs))});
        return data;
    }
    std::unique_ptr<QMimeData> offering(const QString& offer, const QByteArray& jpeg, const QByteArray& png) const
    {
        auto data = std::make_unique<QMimeData>();
        if (offer.contains(u"file"))
            return pictureFile();
        if (offer.contains(u"jpeg bytes"))
            data->setData(u"image/jpeg"_qs, jpeg);
        if (offer.contains(u"png bytes"))
            data->setData(u"image/png"_qs, png);
        if (offer.contains(u"image"))
            data->setImageData(QImage::fromData(png));
        if (offer == u"data address")
            data->setUrls({QUrl(u"data:image/png;base64,"_qs + QString::fromLatin1(png.toBase64()))});
        if (offer.startsWith(u"web"))
            data->setUrls({QUrl(u"https://example.org/cover.png"_qs)});
        if (offer == u"audio")
            data->setUrls({QUrl::fromLocalFile(library_->list.content()[0]->path)});
        if (offer == u"svg")
            data->setData(u"image/svg+xml"_qs, "<svg/>");
        if (offer.startsWith(u"bytes"))
            data->setData(u"image/png"_qs, "\x89PNG but not really");
        if (offer == u"vanished source")
            data->setData(u"image/png"_qs, {});
        if (offer == u"text")
            data->setText(u"cover.png"_qs);
        return data;
    }
    static QString codecOf(const QString& path)
    {
        return OtherReaders::output(u"ffprobe"_qs, {u"-v"_qs, u"error"_qs, u"-show_entries"_qs,
                                                    u"stream=codec_name"_qs, u"-of"_qs, u"csv=p=0"_qs, path});
    }

    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<Library> library_;
};

QTEST_MAIN(ArtworkCommandsTest)
#include "ArtworkCommandsTest.moc"
