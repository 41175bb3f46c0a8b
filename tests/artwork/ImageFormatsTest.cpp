#include "artwork/ImageFormats.h"
#include "artwork/DrawnImageRect.h"
#include "artwork/SavePanelAccessoryView.h"
#include "model/Picture.h"
#include "platform/UserDefaults.h"
#include "platform/ui/FileDialogs.h"
#include "platform/ui/SaveDialog.h"
#include "support/OtherReaders.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QBuffer>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QImageWriter>
#include <QLineEdit>
#include <QLinearGradient>
#include <QPainter>
#include <QPushButton>

#include <numeric>

#include <sys/resource.h>

namespace {

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

/// Makes a picture with ffmpeg: another form of one, or a green one.
QByteArray madeByOthers(const QString& source, const QString& pixelFormat, const QString& path)
{
    OtherReaders::output(u"ffmpeg"_qs,
                         u"-v error -y"_qs.split(u' ') + source.split(u'|')
                             + QStringList{u"-frames:v"_qs, u"1"_qs, u"-pix_fmt"_qs, pixelFormat, path});
    return ScratchFolder::contents(path);
}

QByteArray green(const QString& size, const QString& pixelFormat, const QString& path)
{
    return madeByOthers(u"-f|lavfi|-i|color=c=green:s="_qs + size, pixelFormat, path);
}

QImage onWhite(const QImage& image)
{
    QImage flat(150, 90, QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(0, 0, image);
    return flat;
}

/// The mean difference of a colour value.
double difference(const QImage& one, const QImage& other)
{
    const uchar* bytes = one.constBits();
    const auto apart = [](uchar a, uchar b) { return std::abs(a - b); };
    return std::transform_reduce(bytes, bytes + one.sizeInBytes(), other.constBits(), 0.0, std::plus<>(), apart) / 3
           / one.width() / one.height();
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
            QCOMPARE(OtherReaders::pictureCodec(path), codec);
            const QImage seen = QImage::fromData(madeByOthers(u"-i|"_qs + path, u"rgba"_qs, path + u".png"_qs));
            QCOMPARE(seen.size(), image.size());
            const double found = difference(onWhite(seen), onWhite(image));
            QVERIFY2(found <= tolerance.toDouble(), qPrintable(QString::number(found)));
            QCOMPARE(qAlpha(seen.pixel(2, 2)), transparent && !keepsTransparency.isEmpty() ? 0 : 255);
        }
    }

    void gifKeepsUpTo256ColoursExactly()
    {
        QImage image(16, 16, QImage::Format_RGB32);
        for (int i = 0; i < 256; ++i)
            image.setPixel(i % 16, i / 16, qRgb(i % 16 * 16 + 3, i / 16 * 16 + 1, 128));
        QCOMPARE(Picture::decode(ImageFormats::encode(image, 3).value()).convertToFormat(image.format()), image);
        QVERIFY(!ImageFormats::encode(QImage(), 3));
        QVERIFY(!ImageFormats::encode(QImage(70'000, 1, QImage::Format_RGB32), 3));
    }

    // the proposed name | the formats chosen and names typed then | the saved file
    void savesUnderTheNameInTheField_data()
    {
        addRows({"Track |  | Track.jpeg", "Track | 1 | Track.png", "The \"Best\" Song | 1 | The \"Best\" Song.png",
                 "12\" |  | 12\".jpeg", "Vol. 2 | 4 | Vol. 2.bmp", "Track | Vol. 2, 1 | Vol. 2.png",
                 "b.gif | 1 | b.png", "b.gif.png |  | b.jpeg", "a.jpeg | 1, 2, 0 | a.jpeg",
                 "Track | 1, b.gif | b.gif", "Track | b.gif, 1 | b.png", "Track | b.PNG | b.PNG",
                 "Track | 2, b.tif | b.tif", "~ | ~.jpg | ~.jpg", "Track | 1, folder/b.gif | folder/b.gif"});
    }
    void savesUnderTheNameInTheField()
    {
        const auto [name, actions, expected] = row<3>();
        const ScratchFolder folder;
        QVERIFY(QDir().mkdir(folder.path(u"folder"_qs)));
        UserDefaults defaults(folder.path(u"settings.ini"_qs));
        SavePanelAccessoryView accessory(defaults);
        QString saved;
        SavePanelRequest request;
        request.name = name;
        request.willAppear = [&](SavePanel& panel) { accessory.viewWillAppear(panel); };
        request.formatSelected = [&](int index) { accessory.selectFormat(index); };
        request.chosen = [&](const QString& path) { saved = path; };
        auto& dialog = *new SaveDialog(nullptr, request, folder.path({}));
        auto& field = *dialog.findChild<QLineEdit*>(u"fileNameEdit"_qs);
        auto& formats = *dialog.findChild<QComboBox*>(u"fileTypeCombo"_qs);
        for (const auto& action : actions.split(u", "_qs, Qt::SkipEmptyParts)) {
            if (!action[0].isDigit()) {
                field.selectAll();
                QTest::keyClicks(&field, action);
                continue;
            }
            const int steps = action.toInt() - formats.currentIndex();
            for (int i = 0; i < std::abs(steps); ++i)
                QTest::keyClick(&formats, steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        }
        QCOMPARE(field.text(), expected);
        QCOMPARE(formats.currentIndex(), ImageFormats::indexForExtension(QFileInfo(expected).suffix().toLower()));
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save), Qt::LeftButton);
        QCOMPARE(saved, folder.path(expected));
    }

    void noPanelIsOpenTwice()
    {
        QWidget window;
        FileDialogs panels;
        panels.setParentWindow(&window);
        ImagePanelRequest request;
        for (const auto& subject : {u"a"_qs, u"a"_qs, u"b"_qs}) {
            request.subject = {subject};
            const auto before = window.findChildren<QFileDialog*>();
            panels.chooseImageFiles(request);
            const auto after = window.findChildren<QFileDialog*>();
            QCOMPARE(std::count_if(after.begin(), after.end(), [](auto* panel) { return panel->isVisible(); }), 1);
            QCOMPARE(after.size() > before.size(), before.isEmpty() || subject == u"b");
        }
    }

    void drawsTheImageWhereTheViewSays()
    {
        using namespace DrawnImageRect;
        struct Case {
            QSizeF image;
            QSizeF bounds;
            QRect expected;
            Scaling scaling = Scaling::ProportionallyUpOrDown;
            Frame frame = Frame::None;
            Qt::Alignment alignment = Qt::AlignCenter;
        };
        const std::vector<Case> cases{
            {{0, 0}, {240, 240}, {0, 0, 0, 0}},
            {{600, 300}, {240, 240}, {0, 60, 240, 120}},
            {{300, 600}, {240, 240}, {60, 0, 120, 240}},
            {{33, 20}, {100, 101}, {0, 20, 100, 61}},
            {{30, 20}, {240, 240}, {105, 110, 30, 20}, Scaling::ProportionallyDown},
            {{30, 20}, {240, 100}, {2, 2, 236, 96}, Scaling::AxesIndependently, Frame::Groove},
            {{30, 20}, {240, 100}, {1, 1, 237, 97}, Scaling::AxesIndependently, Frame::Photo},
            {{31, 20}, {100, 100}, {35, 40, 31, 20}, Scaling::None},
            {{30, 20}, {240, 100}, {8, 8, 30, 20}, Scaling::None, Frame::GreyBezel, Qt::AlignLeft | Qt::AlignTop},
            {{30, 20},
             {240, 100},
             {208, 78, 30, 20},
             Scaling::None,
             Frame::Button,
             Qt::AlignRight | Qt::AlignBottom}};
        for (const auto& [image, bounds, expected, scaling, frame, alignment] : cases)
            QCOMPARE(drawnImageRect(image, {{}, bounds}, frame, scaling, alignment), expected);
    }

    void whatIsNoPictureHasNoSize()
    {
        const std::vector<std::pair<QByteArray, QByteArray>> others{
            {"", ""},
            {"\xff\xd8\xff", "jpeg"},
            {"<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", ""},
            {"RIFF....WAVE", ""}};
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
        const QByteArray bytes = green(pixels, pixelFormat, folder.path(name));
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
        const bool isWhole = name == u"a.png" && shown != u"0x0";
        QCOMPARE(Picture::decode(bytes).isNull(), !isWhole);
        QCOMPARE(Picture::canBeDecodedWhole(bytes), isWhole);
    }

    void jpegFilesThatADecoderKeepsWholeAreRefusedEarlier()
    {
        const ScratchFolder folder;
        const QByteArray large = green(u"8000x8000"_qs, u"yuvj420p"_qs, folder.path(u"a.jpg"_qs));
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
