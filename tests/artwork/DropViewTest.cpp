#include "artwork/ui/DropView.h"
#include "artwork/ImageFormats.h"
#include "artwork/ui/AlbumArtView.h"
#include "support/OpenLibrary.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

namespace {

struct ShownWell : OpenLibrary {
    using OpenLibrary::OpenLibrary;
    DropView well{artworkDrops, art};
};

} // namespace

class DropViewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        library_.emplace(u"v24.mp3 tagged.m4a untagged.mp3"_qs);
        well().resize(240, 240);
        well().show();
        QVERIFY(QTest::qWaitForWindowExposed(&well()));
    }

    void placeholderIsTheGivenDrawing()
    {
        const QImage expected(QStringLiteral(TEST_DATA_DIR "/placeholder.png"));
        well().clearFocus();
        const QImage shown = painted();
        QCOMPARE(shown.size(), expected.size());
        int different = 0;
        for (int y = 0; y < 240; ++y) {
            for (int x = 0; x < 240; ++x)
                different += std::abs(qGray(shown.pixel(x, y)) - qGray(expected.pixel(x, y))) > 48;
        }
        QVERIFY2(different < 40, qPrintable(QString::number(different)));
    }

    void showsThePlaceholderOrTheArt()
    {
        QVERIFY(showsPlaceholder());
        select({0, 1});
        QTRY_VERIFY(!showsPlaceholder());
        QVERIFY(well().toolTip().contains(u"JPEG"_qs));
        const QSize art = well().imageView().image().size();
        QCOMPARE(well().imageView().intrinsicContentSize(), QSize(240, 240 * art.height() / art.width()));
        select({0, 1, 2});
        QTRY_VERIFY(showsPlaceholder());
        QCOMPARE(well().imageView().intrinsicContentSize(), QSize(0, 0));
        QVERIFY(!library_->art.isShown());
        // A picture that turns out to be broken is there, but not shown.
        library_->art.show(ScratchFolder::fixture(u"cover.png"_qs).first(60));
        QTRY_VERIFY(!library_->art.isShown());
        QVERIFY(library_->art.isThere() && !showsPlaceholder());
        QVERIFY(well().toolTip().startsWith(u"Can't be shown"_qs) && well().toolTip().contains(u"PNG"_qs));
    }

    void fadesTheArtOnlyUnderWhatItTakes()
    {
        QMimeData picture;
        picture.setUrls({QUrl::fromLocalFile(library_->folder.copy(u"cover.png"_qs))});
        QVERIFY(!enter(picture, Qt::CopyAction));
        select({0});
        QTRY_VERIFY(!showsPlaceholder());
        QVERIFY(!enter(picture, Qt::MoveAction));
        QVERIFY(enter(picture, Qt::CopyAction | Qt::MoveAction));
        QTRY_COMPARE(well().imageView().alphaValue(), 0.0);
        QVERIFY(showsPlaceholder());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&well(), &leave);
        QVERIFY(!well().canDrag());
        QTRY_COMPARE(well().imageView().alphaValue(), 1.0);
    }

    void onlyTheLastPictureIsDecoded()
    {
        PictureDecoder decoder;
        QSignalSpy decoded(&decoder, &PictureDecoder::decoded);
        QImage large(3000, 3000, QImage::Format_RGB32);
        large.fill(Qt::darkGreen);
        const QByteArray bytes = ImageFormats::encode(large, 0).value();
        for (int side = 100; side < 150; ++side)
            decoder.decode(bytes, {side, side});
        QTRY_VERIFY(!decoded.isEmpty());
        QTest::qWait(0);
        QCOMPARE(decoded.size(), 1);
        QCOMPARE(qvariant_cast<QImage>(decoded[0][0]).width(), 149);
        decoder.decode(bytes, {100, 100});
        decoder.cancel();
        decoder.decode({}, {100, 100});
        QTRY_COMPARE(decoded.size(), 2);
        QVERIFY(qvariant_cast<QImage>(decoded[1][0]).isNull());
    }

private:
    DropView& well() { return library_->well; }
    void select(const QList<int>& rows)
    {
        library_->list.selection().setRows(rows);
        well().update();
    }
    bool enter(const QMimeData& data, Qt::DropActions actions)
    {
        QDragEnterEvent event({120, 120}, actions, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&well(), &event);
        return event.isAccepted();
    }
    /// The well in the placeholder's colour on white.
    QImage painted()
    {
        QImage image(well().size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPalette colours;
        colours.setColor(QPalette::Disabled, QPalette::WindowText, Qt::black);
        colours.setColor(QPalette::Active, QPalette::PlaceholderText, Qt::black);
        well().setPalette(colours);
        well().render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }
    /// Whether the middle of the placeholder's frame is black.
    bool showsPlaceholder() { return painted().pixelColor(86, 102) == QColor(Qt::black); }

    std::optional<ShownWell> library_;
};

QTEST_MAIN(DropViewTest)
#include "DropViewTest.moc"
