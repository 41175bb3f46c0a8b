#include "app/ui/Program.h"
#include "tagengine/TaglibWrapper.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

namespace {

struct Options {
    QStringList paths;
    QString screenshot;
    QString appearance;
};

Options parseOptions(const QApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate("main", "Edits the tags of MP3 and M4A files."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption appearance(
        QStringLiteral("appearance"),
        QCoreApplication::translate("main", "Use a light or dark appearance whatever the desktop prefers."),
        QStringLiteral("light|dark"));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QCoreApplication::translate("main", "Select the first file, save a picture of the window, and quit."),
        QStringLiteral("file"));
    parser.addOptions({appearance, screenshot});
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QCoreApplication::translate("main", "Files and folders to open."),
                                 QStringLiteral("[file|folder …]"));
    parser.process(application);
    return {parser.positionalArguments(), parser.value(screenshot), parser.value(appearance)};
}

void followAppearance(Program& program, const QString& wanted)
{
    using Preference = DBusColourScheme::Preference;
    if (!wanted.isEmpty()) {
        program.appearance.apply(wanted == QLatin1String("dark") ? Appearance::Mode::Dark : Appearance::Mode::Light);
        return;
    }
    QObject::connect(&program.colourScheme, &DBusColourScheme::changed, &program.window, [&](Preference preference) {
        if (preference == Preference::None)
            program.appearance.applyDesktop();
        else
            program.appearance.apply(preference == Preference::Dark ? Appearance::Mode::Dark
                                                                    : Appearance::Mode::Light);
    });
}

void authoriseNotifications(Program& program)
{
    if (!program.defaults.boolForKey(DefaultsKey::showNotifications))
        return;
    program.notifier.presentQuietlyInFront();
    program.notifier.requestAuthorization();
}

void saveScreenshot(Program& program, const QString& file)
{
    if (program.list.rowCount() > 0)
        program.list.selection().setRows({0});
    // The selection has asked for a repaint, which this lets happen first.
    QTimer::singleShot(0, &program.window, [&program, file] {
        const bool saved = program.window.grab().save(file);
        if (!saved)
            qCritical("The picture could not be saved: %s", qUtf8Printable(file));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Sonvika"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SONVIKA_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.sonvika.Sonvika"));
    const Options options = parseOptions(application);

    TaglibWrapper::recoverInterruptedChanges();
    Program program;
    program.panels.setParentWindow(&program.window);
    QObject::connect(&program.loader, &FileLoader::activationWanted, &program.window, &MainWindow::bringToFront);
    QObject::connect(&program.loader, &FileLoader::frontWanted, &program.window, &MainWindow::bringToFront);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &program.controller, &ViewController::endEditing);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &program.controller,
                     &ViewController::endEditing);
    followAppearance(program, options.appearance);
    authoriseNotifications(program);
    program.window.show();

    QTimer::singleShot(0, &program.window, [&] {
        program.controller.openPaths(options.paths);
        if (!options.screenshot.isEmpty())
            saveScreenshot(program, options.screenshot);
    });
    return QApplication::exec();
}
