#include "app/ui/Program.h"
#include "naming/ui/TokenField.h"
#include "platform/DBusApplication.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

namespace {

/// Ends the session as failed unless a step is done in time.
template <class IsDone>
void await(const char* step, IsDone isDone)
{
    if (!QTest::qWaitFor(isDone))
        qFatal("Not done: %s", step);
}

void editFiles(Program& program, const QByteArray& picture, const QString& chosen)
{
    auto* title = program.window.findChild<QLineEdit*>(u"TITLE"_qs);
    title->setFocus();
    title->selectAll();
    QTest::keyClicks(title, u"Evening"_qs);
    QTest::keyClick(title, Qt::Key_Return);
    program.artwork.deleteImage();
    await("delete", [&] { return !program.art.isShown(); });
    QMimeData dropped;
    dropped.setData(u"image/png"_qs, picture);
    program.artworkDrops.performDragOperation(dropped);
    await("drop", [&] { return program.art.isShown(); });
    await("save", [&] { return program.artwork.saveArt(program.art.bytes(), chosen + u"/cover.jpg"_qs); });
    await("drag", [&] { return program.artworkDrops.pasteboardWriterForDropView()->urls().size() == 1; });

    program.controller.showFormatWindow();
    auto* rename = program.window.findChild<QAbstractButton*>(u"rename"_qs);
    program.window.findChild<TokenField*>()->setTokens({u"Title"_qs, u" "_qs, u"File Name"_qs});
    await("format", [&] { return rename->isEnabled(); });
    rename->click();
    await("rename", [&] { return program.list.arrangedObjects().front()->path.contains(u"/Evening"_qs); });
    program.controller.removeUnsupportedTags();
    program.controller.removeAllTags();
}

void lookAround(Program& program)
{
    program.controller.openQuickLook();
    await("preview", [&] { return program.previewPanel.isPreviewShown(); });
    program.controller.closeQuickLook();
    program.preferences.showPreferences();
    for (auto* widget : QApplication::allWidgets()) {
        if (widget->objectName() == u"notificationsButton")
            qobject_cast<QAbstractButton*>(widget)->click();
    }
    await("preference", [&] { return program.defaults.boolForKey(DefaultsKey::showNotifications); });
}

} // namespace

/// One session of the real program, for a test that watches it from outside: Session FOLDER PICTURE CHOSEN-FOLDER.
/// The files of the first folder are edited in the ways that there are; the art is saved into the last one.
int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Sonvika"));
    const QStringList arguments = QCoreApplication::arguments();
    DBusApplication onTheBus;
    onTheBus.claim();
    Program program;
    program.recovery.start();
    program.window.attachPreview(program.preview);
    program.delegate.applicationWillFinishLaunching();
    program.window.show();
    program.updater.start();
    program.delegate.applicationOpenFiles({arguments.at(1)});
    await("open", [&] { return program.list.rowCount() == 2; });
    program.controller.selectAll();
    lookAround(program);
    QFile picture(arguments.at(2));
    await("read", [&] { return picture.open(QIODevice::ReadOnly); });
    editFiles(program, picture.readAll(), arguments.at(3));
    program.window.close();
    program.delegate.applicationWillTerminate();
    return 0;
}
