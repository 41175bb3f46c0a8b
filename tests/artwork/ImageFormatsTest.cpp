#include "artwork/ImageFormats.h"
#include "artwork/DrawnImageRect.h"
#include "artwork/SavePanelAccessoryView.h"
#include "model/Picture.h"
#include "platform/UserDefaults.h"
#include "platform/ui/SaveDialog.h"
#include "support/OtherReaders.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QBuffer>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>

#include <sys/resource.h>

namespace {

struct FakeSavePanel : SavePanel {
    void setFormatTitles(const QStringList& names) override { titles = names; }
    void selectFormat(int index) override { format = index; }
    void setAllowedExtensions(const QStringList& names) override { extensions = names; }
    QStringList titles;
    QStringList extensions;
    int format = -1;
};

/// Smooth colours with hard edges and, if wanted, a transparent corner.
QImage drawing(bool transparent)
{
    QImage image(150, 90, QImage::Format_ARGB32);
    image.fill(transparent ? Qt::transparent : Qt::darkCyan);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, 150, 90);
    gradient.setColorAt(0, QColor(250, 220, 40));
    gradient.setColorAt(1, QColor(40, 20, 160));
    painter.fillRect(30, 20, 120, 70, gradient);
    return image;
}

/// The pixels of a picture as ffmpeg decodes them, over white where they are transparent.
QImage decodedByOthers(const QString& path)
{
    const QByteArray size =
        OtherReaders::output(u"ffprobe"_qs, {u"-v"_qs, u"error"_qs, u"-show_entries"_qs, u"stream=width,height"_qs,
                                             u"-of"_qs, u"csv=p=0"_qs, path})
            .toLatin1();
    const QString pixels = path + u".rgba"_qs;
    OtherReaders::output(u"ffmpeg"_qs, {u"-v"_qs, u"error"_qs, u"-y"_qs, u"-i"_qs, path, u"-frames:v"_qs, u"1"_qs,
                                        u"-pix_fmt"_qs, u"rgba"_qs, u"-f"_qs, u"rawvideo"_qs, pixels});
    const QByteArray bytes = ScratchFolder::contents(pixels);
    const int width = size.split(',').value(0).toInt();
    const int height = size.split(',').value(1).toInt();
    if (width * height * 4 != bytes.size() || bytes.isEmpty())
        return {};
    return QImage(reinterpret_cast<const uchar*>(bytes.constData()), width, height, width * 4,
                  QImage::Format_RGBA8888)
        .copy();
}

QImage onWhite(const QImage& image)
{
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(0, 0, image);
    return flat;
}

/// The mean difference of a colour value.
double difference(const QImage& one, const QImage& other)
{
    if (one.size() != other.size())
        return 256;
    double sum = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
        }
    }
    return sum / 3 / one.width() / one.height();
}

} // namespace

class ImageFormatsTest : public QObject {
    Q_OBJECT

private slots:
    // extension | ffmpeg's name of the format | mean difference allowed | keeps transparency
    void othersReadWhatIsWritten_data()
    {
        addRows({"jpg | mjpeg | 1.5", "png | png | 0 | yes", "tiff | tiff | 0 | yes", "gif | gif | 2 | yes",
                 "bmp | bmp | 0", "jpeg | mjpeg | 1.5", "PNG | mjpeg | 1.5"});
    }
    void othersReadWhatIsWritten()
    {
        const auto [extension, codec, tolerance, keepsTransparency] = row<4>();
        const ScratchFolder folder;
        const QString path = folder.path(u"cover."_qs + extension);
        for (const bool transparent : {false, true}) {
            const QImage image = drawing(transparent);
            const auto bytes = ImageFormats::encode(image, ImageFormats::indexForExtension(extension));
            QVERIFY(bytes);
            ScratchFolder::write(path, *bytes);
            QCOMPARE(OtherReaders::output(u"ffprobe"_qs, {u"-v"_qs, u"error"_qs, u"-show_entries"_qs,
                                                          u"stream=codec_name"_qs, u"-of"_qs, u"csv=p=0"_qs, path}),
                     codec);
            const QImage seen = decodedByOthers(path);
            const double found = difference(onWhite(seen), onWhite(image));
            QVERIFY2(found <= tolerance.toDouble(), qPrintable(QString::number(found)));
            QCOMPARE(qAlpha(seen.pixel(2, 2)), transparent && !keepsTransparency.isEmpty() ? 0 : 255);
        }
    }

    void gifKeepsUpTo256ColoursExactly()
    {
        QImage image(64, 64, QImage::Format_RGB32);
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x)
                image.setPixel(x, y, qRgb(x / 4 * 16 + 3, y / 4 * 16 + 1, 128));
        }
        QCOMPARE(difference(Picture::decode(ImageFormats::encode(image, 3).value()), image), 0.0);
        QVERIFY(!ImageFormats::encode(QImage(), 3));
        QVERIFY(!ImageFormats::encode(QImage(70'000, 1, QImage::Format_RGB32), 3));
    }

    // stored | starts with | after choosing | stored then | extensions
    void formatChoiceIsStoredAtOnce_data()
    {
        addRows({"- | 0 | 1 | 1 | png", "3 | 3 | 0 | 0 | jpeg jpg", "5 | 0 | 2 | 2 | tiff", "-1 | 0 | 4 | 4 | bmp",
                 "junk | 0 | 3 | 3 | gif"});
    }
    void formatChoiceIsStoredAtOnce()
    {
        const auto [stored, start, choice, storedThen, extensions] = row<5>();
        const ScratchFolder folder;
        const QString settings = folder.path(u"settings.ini"_qs);
        if (stored != u"-")
            ScratchFolder::write(settings, "[General]\nfileTypeIndex=" + stored.toLatin1() + '\n');
        UserDefaults defaults(settings);
        SavePanelAccessoryView accessory(defaults);
        FakeSavePanel panel;
        accessory.viewWillAppear(panel);
        QCOMPARE(panel.titles.size(), 5);
        QCOMPARE(panel.format, start.toInt());
        accessory.selectFormat(panel, choice.toInt());
        QCOMPARE(panel.extensions, extensions.split(u' '));
        QVERIFY(ScratchFolder::contents(settings).contains("fileTypeIndex=" + storedThen.toLatin1()));
    }

    // the name as a dialog gives it | the format chosen there, from JPEG | the saved file
    void savesUnderTheExtensionOfTheFormat_data()
    {
        addRows({"Track | 1 | Track.png", "Track.jpeg | 1 | Track.png", "Live.2 | 2 | Live.2.tiff",
                 "Track.jpg | 0 | Track.jpg", "Track.gif | 4 | Track.gif.bmp"});
    }
    void savesUnderTheExtensionOfTheFormat()
    {
        const auto [name, format, expected] = row<3>();
        const ScratchFolder folder;
        UserDefaults defaults(folder.path(u"settings.ini"_qs));
        SavePanelAccessoryView accessory(defaults);
        QString saved;
        SavePanelRequest request;
        request.name = u"Track"_qs;
        request.willAppear = [&](SavePanel& panel) { accessory.viewWillAppear(panel); };
        request.formatSelected = [&](SavePanel& panel, int index) { accessory.selectFormat(panel, index); };
        request.chosen = [&](const QString& path) { saved = path; };
        SaveDialog dialog(nullptr, request, folder.path({}));
        dialog.selectNameFilter(ImageFormats::titles().at(format.toInt()));
        emit dialog.fileSelected(folder.path(name));
        QCOMPARE(saved, folder.path(expected));
    }

    // image | bounds | frame | scaling | alignment | rectangle
    void drawsTheImageWhereTheViewSays_data()
    {
        addRows({"0x0 | 240x240 | none | updown | centre | 0,0 0x0",
                 "600x300 | 240x240 | none | updown | centre | 0,60 240x120",
                 "300x600 | 240x240 | none | updown | centre | 60,0 120x240",
                 "30x20 | 240x240 | none | updown | centre | 0,40 240x160",
                 "30x20 | 240x240 | none | down | centre | 105,110 30x20",
                 "600x300 | 240x240 | none | down | centre | 0,60 240x120",
                 "30x20 | 240x100 | none | axes | centre | 0,0 240x100",
                 "300x20 | 240x100 | none | none | centre | -30,40 300x20",
                 "30x20 | 240x100 | none | none | left top | 0,0 30x20",
                 "30x20 | 240x100 | none | none | right bottom | 210,80 30x20",
                 "30x20 | 240x100 | groove | axes | centre | 2,2 236x96",
                 "30x20 | 240x100 | button | none | right bottom | 208,78 30x20",
                 "30x20 | 240x100 | photo | axes | centre | 1,1 237x97",
                 "30x20 | 240x100 | bezel | none | left top | 8,8 30x20",
                 "33x20 | 100x101 | none | updown | centre | 0,20 100x61",
                 "31x20 | 100x100 | none | none | centre | 35,40 31x20"});
    }
    void drawsTheImageWhereTheViewSays()
    {
        using namespace DrawnImageRect;
        const auto [image, bounds, frame, scaling, alignment, expected] = row<6>();
        const QHash<QString, Frame> frames{{u"none"_qs, Frame::None},
                                           {u"groove"_qs, Frame::Groove},
                                           {u"button"_qs, Frame::Button},
                                           {u"photo"_qs, Frame::Photo},
                                           {u"bezel"_qs, Frame::GreyBezel}};
        const QHash<QString, Scaling> scalings{{u"updown"_qs, Scaling::ProportionallyUpOrDown},
                                               {u"down"_qs, Scaling::ProportionallyDown},
                                               {u"axes"_qs, Scaling::AxesIndependently},
                                               {u"none"_qs, Scaling::None}};
        const QHash<QString, Qt::Alignment> alignments{{u"centre"_qs, Qt::AlignCenter},
                                                       {u"left top"_qs, Qt::AlignLeft | Qt::AlignTop},
                                                       {u"right bottom"_qs, Qt::AlignRight | Qt::AlignBottom}};
        const auto size = [](const QString& text) {
            return QSizeF(text.section(u'x', 0, 0).toDouble(), text.section(u'x', 1).toDouble());
        };
        const QRect found = drawnImageRect(size(image), {{}, size(bounds)}, frames.value(frame),
                                           scalings.value(scaling), alignments.value(alignment));
        QCOMPARE(u"%1,%2 %3x%4"_qs.arg(found.x()).arg(found.y()).arg(found.width()).arg(found.height()), expected);
    }

    void tellsPicturesByTheirContent()
    {
        const QByteArray cover = ScratchFolder::fixture(u"cover.jpg"_qs);
        QCOMPARE(Picture::format(cover), "jpeg");
        QVERIFY(!Picture::size(cover).isEmpty());
        const std::vector<std::pair<QByteArray, QByteArray>> others{
            {"", ""},
            {"\xff\xd8\xff", "jpeg"},
            {"<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", ""},
            {"RIFF....WAVE", ""},
            {ScratchFolder::fixture(u"v24.mp3"_qs), ""}};
        for (const auto& [bytes, format] : others) {
            QCOMPARE(Picture::format(bytes), format);
            QVERIFY(Picture::size(bytes).isEmpty() && Picture::decode(bytes).isNull());
        }
    }

    void readsTheSizeFromTheHeader_data() { addRows({"jpeg", "png", "gif", "bmp", "tiff", "webp 100", "webp 50"}); }
    void readsTheSizeFromTheHeader()
    {
        const auto [format] = row<1>();
        QImage image(37, 21, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray bytes = ImageFormats::encode(image, 3).value();
        if (format != u"gif") {
            QBuffer buffer(&bytes);
            QVERIFY(buffer.open(QIODevice::WriteOnly | QIODevice::Truncate));
            QImageWriter writer(&buffer, format.section(u' ', 0, 0).toLatin1());
            writer.setQuality(format.section(u' ', 1).toInt());
            QVERIFY2(writer.write(image), qPrintable(writer.errorString()));
        }
        QCOMPARE(Picture::format(bytes), format.section(u' ', 0, 0).toLatin1());
        QCOMPARE(Picture::size(bytes), image.size());
        for (qsizetype length = 0; length < bytes.size(); ++length) {
            const QSize size = Picture::size(QByteArray(bytes.constData(), length));
            QVERIFY2(size.isEmpty() || size == image.size(), qPrintable(QString::number(length)));
        }
    }

    // pixels | pixel format | name | size when shown
    void hugePicturesAreScaledOrRefused_data()
    {
        addRows({"11000x10000 | yuvj444p | a.jpg | 240x218", "6000x6000 | rgb24 | a.png | 240x240",
                 "6000x6000 | rgb48be | a.png | 0x0"});
    }
    void hugePicturesAreScaledOrRefused()
    {
        const auto [pixels, pixelFormat, name, shown] = row<4>();
        const ScratchFolder folder;
        OtherReaders::output(u"ffmpeg"_qs, u"-v error -f lavfi -i color=c=green:s="_qs.append(pixels).split(u' ')
                                               + QStringList{u"-frames:v"_qs, u"1"_qs, u"-pix_fmt"_qs, pixelFormat,
                                                             folder.path(name)});
        const QByteArray bytes = ScratchFolder::contents(folder.path(name));
        const auto text = [](const QSize& size) { return u"%1x%2"_qs.arg(size.width()).arg(size.height()); };
        const auto peak = [] {
            struct rusage usage {};
            getrusage(RUSAGE_SELF, &usage);
            return usage.ru_maxrss / 1024;
        };
        const auto before = peak();
        QCOMPARE(text(Picture::size(bytes)), pixels);
        QCOMPARE(text(Picture::decode(bytes, {240, 240}).size()), shown);
        // Qt 6.8 keeps a PNG picture whole while it scales it.
        const bool isKept = QT_VERSION >= QT_VERSION_CHECK(6, 5, 0) && name == u"a.png";
        QVERIFY2(peak() - before < (isKept ? 192 : 64), qPrintable(QString::number(peak() - before)));
        QCOMPARE(Picture::decode(bytes).isNull(), !(name == u"a.png" && shown != u"0x0"));
    }

    void jpegFilesThatADecoderKeepsWholeAreRefusedEarlier()
    {
        const ScratchFolder folder;
        OtherReaders::output(u"ffmpeg"_qs,
                             u"-v error -f lavfi -i color=c=green:s=8000x8000 -frames:v 1"_qs.split(u' ')
                                 + QStringList{folder.path(u"a.jpg"_qs)});
        const QByteArray large = ScratchFolder::contents(folder.path(u"a.jpg"_qs));
        QVERIFY(!Picture::decode(large, {240, 240}).isNull());
        QByteArray progressive = large;
        progressive[progressive.indexOf("\xff\xc0") + 1] = '\xc2';
        QByteArray behindGarbage = progressive;
        behindGarbage.insert(2, "garbage");
        QByteArray scanByScan = large;
        scanByScan[scanByScan.indexOf("\xff\xda") + 4] = 1;
        for (const auto& bytes : {progressive, behindGarbage, scanByScan})
            QVERIFY(Picture::decode(bytes, {240, 240}).isNull());

        const QByteArray cover = ScratchFolder::fixture(u"cover.jpg"_qs);
        const QByteArray scans = QByteArray("\xff\xda\0\x08", 4).append(QByteArray(6, 0)).repeated(101);
        QVERIFY(Picture::decode(cover.chopped(2) + scans, {240, 240}).isNull());
        QVERIFY(!Picture::decode(cover + scans, {240, 240}).isNull());
    }
};

QTEST_MAIN(ImageFormatsTest)
#include "ImageFormatsTest.moc"
