#include "Corpus.h"
#include "Parts.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <exception>

namespace {

struct Options {
    QString folder;
    int largest;
    QStringList parts;

    bool wants(const char* part) const { return parts.isEmpty() || parts.contains(QLatin1String(part)); }
};

Options parseOptions(const QApplication& application)
{
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption folder(QStringLiteral("folder"), QStringLiteral("Make the files here, and keep them."),
                                    QStringLiteral("folder"));
    const QCommandLineOption largest(QStringLiteral("max"),
                                     QStringLiteral("Load at most so many files (1000 or more)."),
                                     QStringLiteral("N"), QStringLiteral("50000"));
    parser.addOptions({folder, largest});
    parser.addPositionalArgument(QStringLiteral("parts"), QStringLiteral("What to measure; everything by default."),
                                 QStringLiteral("[load] [memory] [list] [save] [art] [rename] [work] [start]"));
    parser.process(application);
    return {parser.value(folder), std::max(1'000, parser.value(largest).toInt()), parser.positionalArguments()};
}

void runParts(const Options& options, const QString& folder)
{
    const Corpus corpus(folder);
    std::printf("%s; folders of more than %d files repeat them under other paths (hard links)\n\n",
                qPrintable(QGuiApplication::platformName()), Corpus::poolSize);
    if (options.wants("load"))
        Parts::loading(corpus, options.largest);
    if (options.wants("memory"))
        Parts::memory(corpus, options.largest);
    if (options.wants("list"))
        Parts::list(corpus, options.largest);
    if (options.wants("save"))
        Parts::saving(folder);
    if (options.wants("art"))
        Parts::artwork(corpus, folder);
    if (options.wants("rename"))
        Parts::renaming(corpus, options.largest);
    if (options.wants("work"))
        Parts::work(corpus, options.largest);
    if (options.wants("start"))
        Parts::start();
}

/// Keeps the user's settings and recent files out of it, for the child processes too.
void useSettingsIn(const QTemporaryDir& scratch)
{
    // It has the rights that are wanted of this one, which a machine without a session lacks.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", scratch.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", scratch.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", scratch.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_STATE_HOME", scratch.filePath(QStringLiteral("state")).toUtf8());
}

void useOffscreenWithoutDisplay()
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")
        && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

/// The offscreen platform tells of everything that it leaves out.
void printMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support")))
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

} // namespace

int main(int argc, char* argv[])
{
    useOffscreenWithoutDisplay();
    qInstallMessageHandler(printMessage);
    if (argc > 1 && qstrcmp(argv[1], "--child-start") == 0)
        Parts::startChild(argc, argv);
    const QTemporaryDir scratch;
    useSettingsIn(scratch);
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--child-memory")) {
        Parts::memoryChild(arguments.value(2));
        return 0;
    }
    const Options options = parseOptions(application);
    try {
        runParts(options, options.folder.isEmpty() ? scratch.path() : options.folder);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
