#include "artwork/ui/DropView.h"
#include "artwork/ui/AlbumArtView.h"
#include "fakes/Library.h"
#include "support/ScratchFolder.h"

#include <QBuffer>
#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

class DropViewTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        folder_ = std::make_unique<ScratchFolder>();
        library_ = std::make_unique<Library>();
        for (const auto& fixture : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"untagged.mp3"_qs})
            QVERIFY(library_->loader.openPath(folder_->copy(fixture)));
        well_ = std::make_unique<DropView>(library_->artworkDrops, library_->art);
        well_->resize(240, 240);
        well_->show();
        QVERIFY(QTest::qWaitForWindowExposed(well_.get()));
    }
    void cleanup()
    {
        well_.reset();
        library_.reset();
        folder_.reset();
    }

    void placeholderIsTheGivenDrawing()
    {
        const QImage expected(QStringLiteral(TEST_DATA_DIR "/placeholder.png"));
        well_->clearFocus();
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
        QTRY_VERIFY(!well_->imageView().image().isNull());
        QVERIFY(!showsPlaceholder());
        QVERIFY(well_->toolTip().contains(u"JPEG"_qs));
        const QSize art = well_->imageView().image().size();
        QCOMPARE(well_->imageView().intrinsicContentSize(), QSize(240, 240 * art.height() / art.width()));
        select({0, 1, 2});
        QTRY_VERIFY(showsPlaceholder());
        QCOMPARE(well_->imageView().intrinsicContentSize(), QSize(0, 0));
        // A picture that turns out to be broken is none.
        library_->art.show(ScratchFolder::fixture(u"cover.jpg"_qs).first(200));
        QTRY_VERIFY(showsPlaceholder());
    }

    void refusesWhatIsNoPictureOrHasNowhereToGo()
    {
        QMimeData text;
        text.setText(u"cover.png"_qs);
        QMimeData audio;
        audio.setUrls({QUrl::fromLocalFile(folder_->path(u"v24.mp3"_qs))});
        QMimeData picture;
        picture.setUrls({QUrl::fromLocalFile(folder_->copy(u"cover.png"_qs))});
        QVERIFY(!enter(picture) && !well_->canDrag());
        select({0});
        QVERIFY(!enter(text) && !well_->canDrag());
        QVERIFY(!enter(audio) && !well_->canDrag());
        QVERIFY(!enter(picture, Qt::MoveAction) && !well_->canDrag());
        QVERIFY(enter(picture) && well_->canDrag());
    }

    void hoveringFadesTheArtAndLeavingBringsItBack()
    {
        select({0});
        QTRY_VERIFY(!well_->imageView().image().isNull());
        QMimeData picture;
        picture.setUrls({QUrl::fromLocalFile(folder_->copy(u"cover.png"_qs))});
        QVERIFY(enter(picture));
        QCOMPARE(well_->color(), well_->highlightedColor());
        QTRY_COMPARE(well_->imageView().alphaValue(), 0.0);
        QVERIFY(showsPlaceholder());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(well_.get(), &leave);
        QVERIFY(well_->color() == well_->disabledColor() && !well_->canDrag());
        QTRY_COMPARE(well_->imageView().alphaValue(), 1.0);

        QVERIFY(enter(picture));
        QDropEvent drop({120, 120}, Qt::CopyAction, &picture, Qt::LeftButton, {});
        QCoreApplication::sendEvent(well_.get(), &drop);
        QVERIFY(drop.isAccepted() && !well_->canDrag());
        QTRY_COMPARE(library_->art.bytes(), ScratchFolder::fixture(u"cover.png"_qs));
        QTRY_COMPARE(well_->imageView().alphaValue(), 1.0);
    }

    void dragsTheArtBeyondAThreshold()
    {
        select({0});
        QTRY_VERIFY(!well_->imageView().image().isNull());
        for (const auto& [by, drags] : {std::pair{QPoint(3, -3), false}, {QPoint(0, 4), true}}) {
            QTest::mousePress(well_.get(), Qt::LeftButton, {}, {120, 120});
            QMouseEvent move(QEvent::MouseMove, QPointF(120, 120) + by, {}, Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(well_.get(), &move);
            QCOMPARE(well_->findChild<QDrag*>() != nullptr, drags);
            QTest::mouseRelease(well_.get(), Qt::LeftButton, {}, {120, 120});
        }
    }

    void onlyTheLastPictureIsDecoded()
    {
        PictureDecoder decoder;
        QSignalSpy decoded(&decoder, &PictureDecoder::decoded);
        QImage large(3000, 3000, QImage::Format_RGB32);
        large.fill(Qt::darkGreen);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        large.save(&buffer, "jpeg");
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
    void select(const QList<int>& rows)
    {
        library_->list.selection().setRows(rows);
        well_->update();
    }
    bool enter(const QMimeData& data, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction)
    {
        QDragEnterEvent event({120, 120}, actions, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(well_.get(), &event);
        return event.isAccepted();
    }
    /// The well in the placeholder's colour on white.
    QImage painted() const
    {
        QImage image(well_->size(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPalette colours;
        colours.setColor(QPalette::Disabled, QPalette::WindowText, Qt::black);
        colours.setColor(QPalette::Active, QPalette::PlaceholderText, Qt::black);
        well_->setPalette(colours);
        well_->render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }
    /// Whether the middle of the placeholder's frame is black.
    bool showsPlaceholder() const { return painted().pixelColor(86, 102) == QColor(Qt::black); }

    std::unique_ptr<ScratchFolder> folder_;
    std::unique_ptr<Library> library_;
    std::unique_ptr<DropView> well_;
};

QTEST_MAIN(DropViewTest)
#include "DropViewTest.moc"
