#include "app/Translations.h"
#include "app/ui/FirstPaint.h"
#include "app/ui/Program.h"
#include "artwork/ui/AlbumArtView.h"
#include "platform/DBusApplication.h"
#include "platform/PathBytes.h"
#include "platform/SessionBus.h"
#include "platform/StandardStreams.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <functional>
#include <iterator>
#include <utility>

namespace {

struct Options {
    QStringList paths;
    QString screenshot;
    QString appearance;
};

Options parseOptions(const QStringList& arguments)
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
        QCoreApplication::translate("main", "file"));
    parser.addOptions({appearance, screenshot});
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QCoreApplication::translate("main", "Files and folders to open."),
                                 QCoreApplication::translate("main", "[file|folder …]"));
    parser.process(arguments);
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

void setWindowIcon()
{
    QGuiApplication::setWindowIcon(
        QIcon::fromTheme(DBusApplication::name, QIcon(QStringLiteral(":/icons/org.sonvika.Sonvika.svg"))));
}

void grabWindow(Program& program, const QString& file)
{
    const bool saved = program.window.grab().save(file);
    if (!saved)
        qCritical("The picture could not be saved: %s", qUtf8Printable(file));
    QCoreApplication::exit(saved ? 0 : 1);
}

void saveScreenshot(Program& program, const QString& file)
{
    if (program.list.rowCount() > 0)
        program.list.selection().setRows({0});
    const auto grab = [&program, file] { grabWindow(program, file); };
    // The selection has asked for a repaint, which happens first; its art is shown when it is decoded.
    if (program.art.isShown())
        QObject::connect(program.window.findChild<AlbumArtView*>(), &AlbumArtView::imageChanged, &program.window,
                         grab);
    else
        QTimer::singleShot(0, &program.window, grab);
}

void connectWindows(Program& program)
{
    QObject::connect(&program.previewPanel, &PreviewOnDemand::shownChanged, &program.preview,
                     &PreviewController::shownChanged);
    program.window.attachPreview(program.preview);
    program.window.attachFailures(program.failures);
    QObject::connect(&program.notifier, &NotificationPoster::failureNoted, &program.failures, &FailureLog::append);
    QObject::connect(&program.controller, &ViewController::preferencesWanted, &program.preferences,
                     &PreferencesOpener::showPreferences);
    QObject::connect(&program.controller, &ViewController::aboutWanted, &program.preferences,
                     &PreferencesOpener::openAbout);
    QObject::connect(&program.updater, &Updater::updateAvailable, &program.window, &MainWindow::showUpdate);
}

/// What comes in the middle of work waits until that has ended.
void connectWork(Program& program)
{
    program.window.attachWork(program.work);
    program.dropFolder.setDelivery(
        [&program](std::function<void()> deliver) { program.work.whenIdle(std::move(deliver)); });
}

void connectDesktop(Program& program, DBusApplication& onTheBus)
{
    auto* window = &program.window;
    QObject::connect(&program.loader, &FileLoader::activationWanted, window, &MainWindow::bringToFront);
    QObject::connect(&program.loader, &FileLoader::frontWanted, window, &MainWindow::bringToFront);
    QObject::connect(&onTheBus, &DBusApplication::activationWanted, &program.controller, &ViewController::showWindow);
    QObject::connect(&onTheBus, &DBusApplication::opened, window, [&program](const QStringList& paths) {
        program.work.whenIdle([&program, paths] { program.delegate.applicationOpenFiles(paths); });
    });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &program.delegate, &AppDelegate::applicationWillTerminate);
    QObject::connect(qApp, &QGuiApplication::commitDataRequest, window, [&program] {
        program.work.whenIdle([&program] { program.delegate.applicationWillTerminate(); });
    });
    QObject::connect(&program.terminationSignals, &TerminationSignals::endWanted, window, [&program] {
        program.work.abandon();
        // A panel that asks for access holds the work up, and so does what that panel asks.
        while (auto* asking = QApplication::activeModalWidget()) {
            if (!asking->close())
                break;
        }
        program.work.whenIdle([&program] {
            program.window.close();
            QCoreApplication::quit();
        });
    });
}

/// @return whether another process of this user takes the files.
bool isServedElsewhere(DBusApplication& onTheBus, const Options& options)
{
    const bool isOneOfMany = options.screenshot.isEmpty();
    return isOneOfMany && onTheBus.claim() == DBusApplication::Role::Second
           && DBusApplication::handOver(options.paths);
}

} // namespace

int main(int argc, char* argv[])
{
    SessionBus::abandonUnlessItAnswers();
    StandardStreams::occupy();
    // A write beyond a limit then fails, and is told like any other failure.
    std::signal(SIGXFSZ, SIG_IGN);
    const QApplication application(argc, argv);
    // Those of Qt itself are gone by now.
    QStringList arguments;
    std::transform(argv, argv + argc, std::back_inserter(arguments), PathBytes::decode);
    QCoreApplication::setApplicationName(QStringLiteral("Sonvika"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SONVIKA_VERSION));
    QGuiApplication::setDesktopFileName(DBusApplication::name);
    Translations::install(QLocale::system());
    const Options options = parseOptions(arguments);
    DBusApplication onTheBus;
    if (isServedElsewhere(onTheBus, options))
        return 0;

    Program program;
    program.recovery.start();
    program.panels.setParentWindow(&program.window);
    connectWindows(program);
    connectWork(program);
    connectDesktop(program, onTheBus);
    followAppearance(program, options.appearance);
    program.delegate.applicationWillFinishLaunching();
    // Reading the icon themes takes longer than making the window.
    FirstPaint::then(program.window, setWindowIcon);
    program.window.show();
    program.updater.start();

    QTimer::singleShot(0, &program.window, [&] {
        program.delegate.applicationOpenFiles(options.paths);
        if (!options.screenshot.isEmpty())
            saveScreenshot(program, options.screenshot);
    });
    return QApplication::exec();
}
