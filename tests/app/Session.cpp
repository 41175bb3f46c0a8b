#include "app/ui/Program.h"
#include "naming/ui/TokenField.h"
#include "platform/DBusApplication.h"
#include "tagengine/TaglibWrapper.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

/// One session of the real program, for a test that watches it from outside: Session FOLDER PICTURE CHOSEN-FOLDER.
/// The files of the first folder are edited in the ways that there are; the art is saved into the last one.
class Session : public QObject {
    Q_OBJECT

public:
    Session(QString folder, QString picture, QString chosen)
        : folder_(std::move(folder)), picture_(std::move(picture)), chosen_(std::move(chosen))
    {
    }

private slots:
    void opens()
    {
        program_.window.attachPreview(program_.preview);
        program_.delegate.applicationWillFinishLaunching();
        program_.window.show();
        program_.updater.start();
        program_.delegate.applicationOpenFiles({folder_});
        QCOMPARE(program_.list.rowCount(), 2);
        program_.controller.selectAll();
    }
    void editsAField()
    {
        auto* title = program_.window.findChild<QLineEdit*>(u"TITLE"_qs);
        QVERIFY(title);
        title->setFocus();
        title->selectAll();
        QTest::keyClicks(title, u"Evening"_qs);
        QTest::keyClick(title, Qt::Key_Return);
        QCOMPARE(program_.list.arrangedObjects().front()->title, u"Evening"_qs);
    }
    void setsArt()
    {
        program_.artwork.deleteImage();
        QVERIFY(!program_.art.isShown());
        QMimeData dropped;
        QFile picture(picture_);
        QVERIFY(picture.open(QIODevice::ReadOnly));
        dropped.setData(u"image/png"_qs, picture.readAll());
        QVERIFY(program_.artworkDrops.performDragOperation(dropped));
        QTRY_VERIFY(program_.art.isShown());
    }
    void savesAndDragsArt()
    {
        QVERIFY(program_.artwork.saveArt(chosen_ + u"/cover.jpg"_qs));
        const auto dragged = program_.artworkDrops.pasteboardWriterForDropView();
        QVERIFY(dragged && dragged->urls().size() == 1);
    }
    void renames()
    {
        program_.controller.showFormatWindow();
        auto* field = program_.window.findChild<TokenField*>();
        auto* rename = program_.window.findChild<QAbstractButton*>(u"rename"_qs);
        QVERIFY(field && rename);
        field->setTokens({u"Title"_qs, u" "_qs, u"File Name"_qs});
        QTRY_VERIFY(rename->isEnabled());
        rename->click();
        QTRY_VERIFY(program_.list.arrangedObjects().front()->path.contains(u"/Evening"_qs));
    }
    void previews()
    {
        program_.controller.openQuickLook();
        QTRY_VERIFY(program_.previewPanel.isPreviewShown());
        program_.controller.closeQuickLook();
    }
    void changesPreferences()
    {
        program_.preferences.showPreferences();
        QAbstractButton* notifications = nullptr;
        for (auto* widget : QApplication::allWidgets()) {
            if (widget->objectName() == u"notificationsButton")
                notifications = qobject_cast<QAbstractButton*>(widget);
        }
        QVERIFY(notifications);
        notifications->click();
    }
    void ends()
    {
        program_.controller.removeUnsupportedTags();
        program_.controller.removeAllTags();
        program_.window.close();
        program_.delegate.applicationWillTerminate();
    }

private:
    QString folder_;
    QString picture_;
    QString chosen_;
    DBusApplication onTheBus_;
    const DBusApplication::Role role_ = onTheBus_.claim();
    const bool recovered_ = (TaglibWrapper::recoverInterruptedChanges(), true);
    Program program_;
};

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Sonvika"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    Session session(arguments.at(1), arguments.at(2), arguments.at(3));
    return QTest::qExec(&session, QStringList{arguments.front()});
}

#include "Session.moc"
