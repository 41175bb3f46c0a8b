#include "support/ConsoleCapture.h"
#include "support/OpenLibrary.h"
#include "support/OtherReaders.h"
#include "support/Rows.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QUrl>

#include <cstdio>
#include <iostream>

class ArtworkCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        library_.emplace(u"v24.mp3 tagged.m4a untagged.mp3"_qs);
        library_->controller.selectAll();
    }

    // the chosen file | what it holds | what is posted
    void changesTheArtOfEverySelectedFile_data()
    {
        addRows(
            {"cover.jpg | jpeg", "cover.jpg | png", "cover.tiff | big", "cover.jpeg | jpeg | Unsupported file type",
             "COVER.JPG | jpeg | Unsupported file type",
             "cover.jpg | text | Unable to load image data: ", "cover.jpg |  | Unable to load image data: ",
             "cover.jpg | huge | Unable to load image data: ", "cover.jpg | missing | Unable to load image data: ",
             "cover.jpg | unreadable | Unable to load image data: ",
             "cover.jpg | folder | Unable to load image data: "});
    }
    void changesTheArtOfEverySelectedFile()
    {
        const auto [name, content, message] = row<3>();
        const QString path = make(name, content);
        const auto before = library_->arts();
        library_->panels.files = {path, library_->folder.path(u"ignored.jpg"_qs)};
        library_->controller.updateImage();
        QVERIFY2(hasPosted(message), qPrintable(library_->notifier.posted.join(u'|')));
        if (message.isEmpty())
            QCOMPARE(library_->art.bytes(), ScratchFolder::contents(path));
        QCOMPARE(library_->arts(), message.isEmpty() ? QList<QByteArray>(3, ScratchFolder::contents(path)) : before);
    }

    void goesOnBehindAFileThatFails()
    {
        const QString& broken = library_->record(1).path;
        ScratchFolder::write(broken, "no audio");
        set(u"png"_qs);
        QCOMPARE(library_->arts(), QList<QByteArray>({contents_[u"png"_qs], {}, contents_[u"png"_qs]}));
        QVERIFY(!library_->art.isThere());
        library_->controller.deleteImage();
        QCOMPARE(library_->arts(), QList<QByteArray>(3));
        QCOMPARE(library_->notifier.posted, QStringList{u"Sonvika: Unable to save album art"_qs});
        QCOMPARE(ScratchFolder::contents(broken), "no audio");
    }

    // selection | what happens while the panel is open | the files that get the art | what is posted
    void aPanelBelongsToTheFilesItWasOpenedFor_data()
    {
        addRows({"0 | select 2 | 0", "0 1 | select 0 | 0 1", "0 1 | remove 0 | 1 | 1 files are no longer in the list",
                 "0 1 | remove 0 1 |  | 2 files are no longer in the list", "0 | strip 0 | 0"});
    }
    void aPanelBelongsToTheFilesItWasOpenedFor()
    {
        const auto [rows, meanwhile, changed, message] = row<4>();
        library_->select(rows);
        const auto records = library_->list.content();
        library_->panels.files = {make(u"cover.png"_qs, u"png"_qs)};
        library_->panels.meanwhile = [this, happens = meanwhile] {
            library_->select(happens.section(u' ', 1));
            if (happens.startsWith(u"remove"))
                library_->controller.removeDocuments();
            if (happens.startsWith(u"strip"))
                library_->controller.removeAllTags();
        };
        library_->controller.updateImage();
        QVERIFY2(hasPosted(message), qPrintable(library_->notifier.posted.join(u'|')));
        for (int i = 0; i < 3; ++i) {
            const bool isNew = Library::numbers(changed).contains(i);
            QCOMPARE(artOf(*records[std::size_t(i)]) == contents_[u"png"_qs], isNew);
        }
        QCOMPARE(library_->art.bytes(), artOf(*library_->list.selectedObjects().front()));
    }

    // a part of the files, of which two have the same art | a command | all that is selected then | what is shown
    void theWellShowsWhatTheFilesHold_data()
    {
        addRows({"2 | jpeg | 0 1 2 | jpeg", "0 | png | 0 1 | nothing", "1 | delete | 0 1 | nothing",
                 "0 | strip png | 0 1 | nothing", "0 | strip text | 0 | text"});
    }
    void theWellShowsWhatTheFilesHold()
    {
        const auto [part, command, rows, shown] = row<4>();
        library_->select(part);
        if (command == u"delete") {
            library_->controller.deleteImage();
        } else if (command.startsWith(u"strip")) {
            const auto record = library_->list.selectedObjects().front();
            QVERIFY(TaglibWrapper::setImageData(contents_[command.section(u' ', 1)], record->path, record->fileType));
            library_->controller.removeUnsupportedTags();
        } else {
            set(command);
        }
        library_->select(rows);
        QCOMPARE(library_->art.bytes(), contents_.value(shown));
    }

    // selection | title | proposed name | path | what is there then, or what is posted
    void savesTheShownArt_data()
    {
        addRows({"0 | Blue Window | Blue Window | new.png | png",
                 "0 1 | Blue Window | Blue Window | new.jpeg | mjpeg",
                 "0 | ... AC/DC\t | _.. AC_DC | missing/new.png | Failed to save to image. url: file://",
                 "0 |  \t | Title | new.PNG | png", "2 | None |  | nothing.png"});
    }
    void savesTheShownArt()
    {
        const auto [rows, title, name, target, expected] = row<5>();
        library_->record(0).title = title;
        library_->select(rows);
        const QString path = library_->folder.path(target);
        QString proposed;
        library_->panels.save = [&](const SavePanelRequest& request) {
            proposed = request.name;
            // It is the art for which the panel was opened.
            library_->controller.deselectAll();
            request.chosen(path);
        };
        library_->controller.saveImage();
        QCOMPARE(proposed, name);
        const bool fails = expected.startsWith(u"Failed");
        QVERIFY(hasPosted(fails ? expected : QString()));
        QCOMPARE(QFile::exists(path), !fails && !expected.isEmpty());
        if (QFile::exists(path))
            QCOMPARE(OtherReaders::pictureCodec(path), expected);
    }

    // what the source offers | what becomes the art, or what is posted
    void takesPicturesFromDragsAndTheClipboard_data()
    {
        addRows({"address=file://FOLDER/cover.png | png", "image/jpeg=jpeg | jpeg", "image/png=png | png",
                 "image/jpeg=jpeg, image | jpeg", "image | encoded", "address=data:image/png;base64,BASE64 | png",
                 "image/png=text | Unable to load image data: ", "text/plain=text | refused",
                 "address=file://FOLDER/v24.mp3 | refused", "address=https://example.org/cover.png | refused",
                 "address=https://example.org/cover.png, image/png=png | png", "image/svg+xml=text | refused",
                 "image/png= | nothing"});
    }
    void takesPicturesFromDragsAndTheClipboard()
    {
        const auto [offer, expected] = row<2>();
        for (const bool drag : {true, false}) {
            init();
            const auto before = library_->arts();
            const auto data = offering(offer);
            QCOMPARE(library_->artworkDrops.accepts(*data), expected != u"refused");
            const bool taken = expected != u"refused" && expected != u"nothing";
            if (drag)
                QCOMPARE(library_->artworkDrops.performDragOperation(*data), taken);
            else
                library_->artwork.pasteImage(*data);
            QTRY_VERIFY(hasPosted(expected.startsWith(u"Unable") ? expected : QString()));
            if (expected == u"encoded") {
                const QImage image = QImage::fromData(library_->arts()[2], "png");
                QCOMPARE(image, QImage::fromData(contents_[u"png"_qs]).convertToFormat(image.format()));
            } else {
                QTRY_COMPARE(library_->arts(),
                             contents_.contains(expected) ? QList<QByteArray>(3, contents_[expected]) : before);
            }
        }
    }

    void cancelingEndsAllOfADrop()
    {
        struct : UnwatchedWork {
            bool fileBegins(const QString&) override { return files++ == 0; }
            int files = 0;
        } stopping;
        auto& l = *library_;
        ArtworkCommands commands(l.list, l.art, l.notifier, l.panels, l.fileBrowser, l.defaults, stopping);
        ArtworkDrops drops(l.list, commands, l.art, l.dropFolder, l.notifier, l.defaults);
        QMimeData pictures;
        pictures.setUrls({QUrl::fromLocalFile(l.folder.copy(u"cover.png"_qs)),
                          QUrl::fromLocalFile(l.folder.copy(u"cover.jpg"_qs))});
        QVERIFY(drops.performDragOperation(pictures));
        // A drop is about the files on which it fell.
        l.controller.deselectAll();
        QTRY_COMPARE(stopping.files, 2);
        QCoreApplication::processEvents();
        QCOMPARE(stopping.files, 2);
        QCOMPARE(l.arts()[0], contents_[u"png"_qs]);
    }

    void saysWhenDroppedDataCannotBeReceived()
    {
        const auto before = library_->arts();
        qputenv("TMPDIR", QFile::encodeName(library_->folder.path(u"missing"_qs)));
        const ConsoleCapture console(std::cout);
        QVERIFY(library_->artworkDrops.performDragOperation(*offering(u"image/png=png"_qs)));
        for (const auto& offer : {u"audio/mpeg=sound"_qs, u"audio/mpeg="_qs}) {
            const auto audio = offering(offer);
            QVERIFY(library_->drops.validateDrop(*audio, false) == ListDrops::Operation::Copy);
            library_->drops.acceptDrop(*audio, false, 0);
        }
        QTRY_COMPARE(library_->notifier.posted.size(), 2);
        qunsetenv("TMPDIR");
        for (const auto& posted : library_->notifier.posted)
            QVERIFY(posted.startsWith(u"Sonvika: Couldn't recieve audiofile drop: "_qs));
        QTRY_COMPARE(library_->notifier.noted.size(), 3);
        QVERIFY(console.text().contains(u"couldn't recieve image drag: "_qs));
        QCOMPARE(library_->arts(), before);
    }

    void addsDroppedAudioWithoutAFile()
    {
        library_->drops.acceptDrop(*offering(u"audio/mpeg=sound"_qs), false, 0);
        QTRY_COMPARE(library_->list.rowCount(), 4);
        const QFileInfo file(library_->record(3).path);
        const QString folder = library_->dropFolder.destinationURL();
        QCOMPARE(file.absolutePath(), folder);
        QVERIFY(folder.endsWith(u"/Drops"_qs) && file.suffix() == u"mp3");
        QCOMPARE(QFileInfo(folder).permissions() & QFile::Permissions(0x0fff),
                 QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
        QVERIFY(QFile::remove(file.filePath()));
    }

    // selection | title of the first file | format | name
    void promisesAFileNamedByTheTitle_data()
    {
        addRows({"0 | Intro | 1 | Intro.png", "0 1 | Intro | 0 | Various.jpg", "0 |  | 3 | AlbumArt.gif",
                 "0 | AC/DC: Live | 9 | AC_DC: Live.jpg", "0 | .hidden | 2 | _hidden.tiff"});
    }
    void promisesAFileNamedByTheTitle()
    {
        const auto [rows, title, format, name] = row<4>();
        library_->record(0).title = title;
        library_->select(rows);
        library_->defaults.setInt(DefaultsKey::fileTypeIndex, format.toInt());
        const auto promise = library_->artworkDrops.pasteboardWriterForDropView();
        QCOMPARE(promise->formats(), QStringList{u"text/uri-list"_qs});
        const QList<QUrl> urls = promise->urls();
        QCOMPARE(urls.size(), 1);
        QCOMPARE(urls.first().fileName(), name);
        QVERIFY(!QImage(urls.first().toLocalFile()).isNull());
        QCOMPARE(promise->urls(), urls);
        library_->record(0).title = QString(300, u'ö');
        QVERIFY(QFile::encodeName(library_->artworkDrops.fileNameForType()).size() < 255);
    }

    void artThatCannotBeWrittenIsNotPromised()
    {
        library_->select(u"0"_qs);
        const QString elsewhere = library_->folder.path(u"elsewhere"_qs);
        QVERIFY(QDir().mkpath(elsewhere) && QDir::setCurrent(elsewhere));
        qputenv("TMPDIR", QFile::encodeName(library_->folder.path(u"missing"_qs)));
        QVERIFY(library_->artworkDrops.pasteboardWriterForDropView()->urls().isEmpty());
        qunsetenv("TMPDIR");
        QVERIFY(QDir(elsewhere).isEmpty() && QDir::setCurrent(u"/"_qs));
        QCOMPARE(library_->artworkDrops.pasteboardWriterForDropView()->urls().size(), 1);

        library_->art.show(contents_[u"png"_qs].first(60));
        QVERIFY(library_->art.isShown());
        QVERIFY(library_->artworkDrops.pasteboardWriterForDropView()->urls().isEmpty());
        QCOMPARE(library_->notifier.posted.size(), 1);
    }

    void copiesTheEncodedArt()
    {
        const auto copied = [] { return QGuiApplication::clipboard()->mimeData()->data(u"image/jpeg"_qs); };
        const QByteArray& cover = contents_[u"jpeg"_qs];
        library_->select(u"0"_qs);
        library_->controller.copyImage();
        QCOMPARE(copied(), cover);
        QCOMPARE(QGuiApplication::clipboard()->image().size(), QImage::fromData(cover).size());
        library_->select(u"2"_qs);
        library_->controller.pasteImage();
        QCOMPARE(library_->arts()[2], cover);
        library_->controller.deleteImage();
        library_->controller.copyImage();
        QCOMPARE(copied(), cover);
    }

private:
    static QByteArray artOf(const AudioFile& record)
    {
        return TaglibWrapper::getImageData(record.path, record.fileType).value_or(QByteArray());
    }
    /// Sets a picture as the art of the selected files.
    void set(const QString& content)
    {
        library_->artwork.setArtFromFile(make(u"cover"_qs, content), library_->list.selectedObjects());
    }
    /// Whether this, and nothing else, has been posted.
    bool hasPosted(const QString& beginning) const
    {
        const QStringList& posted = library_->notifier.posted;
        return beginning.isEmpty() ? posted.isEmpty()
                                   : posted.size() == 1 && posted.first().startsWith(u"Sonvika: "_qs + beginning);
    }
    QString make(const QString& name, const QString& content) const
    {
        const QString path = library_->folder.path(name);
        if (content == u"folder")
            QDir().mkdir(path);
        else if (content != u"missing")
            ScratchFolder::write(path, contents_.value(content));
        if (content == u"huge")
            QFile::resize(path, 200 * 1024 * 1024);
        if (content == u"unreadable")
            QFile::setPermissions(path, {});
        return path;
    }
    /// Each part is a type and a content, "image" or an address.
    std::unique_ptr<QMimeData> offering(const QString& offer) const
    {
        auto data = std::make_unique<QMimeData>();
        for (const auto& part : offer.split(u", "_qs)) {
            const QString type = part.section(u'=', 0, 0);
            QString content = part.section(u'=', 1);
            if (type == u"image")
                data->setImageData(QImage::fromData(contents_[u"png"_qs]));
            else if (type == u"address")
                data->setUrls(
                    {QUrl(content.replace(u"FOLDER"_qs, QFileInfo(make(u"cover.png"_qs, u"png"_qs)).path())
                              .replace(u"BASE64"_qs, QString::fromLatin1(contents_[u"png"_qs].toBase64())))});
            else
                data->setData(type, contents_.value(content));
        }
        return data;
    }

    const QHash<QString, QByteArray> contents_{
        {u"jpeg"_qs, ScratchFolder::fixture(u"cover.jpg"_qs)},
        {u"png"_qs, ScratchFolder::fixture(u"cover.png"_qs)},
        {u"big"_qs, ScratchFolder::fixture(u"cover.png"_qs) + QByteArray(10 * 1024 * 1024, 'x')},
        {u"huge"_qs, ScratchFolder::fixture(u"cover.jpg"_qs)},
        {u"unreadable"_qs, ScratchFolder::fixture(u"cover.jpg"_qs)},
        {u"text"_qs, "\x89PNG but no picture"},
        {u"sound"_qs, ScratchFolder::fixture(u"lame.mp3"_qs)}};
    std::optional<OpenLibrary> library_;
};

QTEST_MAIN(ArtworkCommandsTest)
#include "ArtworkCommandsTest.moc"
