// Uses the whole program at random for a while, and looks at what it has made of the files. What the user does depends on
// the seed, and on the time that things take.
//
//   sonvika-soak [--seconds 480] [--files 2000] [--seed 1]

#include "platform/PathBytes.h"
#include "soak/RandomUser.h"
#include "support/ScratchFolder.h"

#include <QCommandLineParser>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <numeric>

#include <unistd.h>

/// The program's own main.
int sonvikaMain(int argc, char* argv[]);

/// A program that hangs is to say where.
extern "C" const char* __asan_default_options()
{
    return "handle_abort=1";
}

extern "C" const char* __lsan_default_options()
{
    return "print_suppressions=0:suppressions=" SOURCE_DIR "/tests/lsan.supp";
}

namespace {

/// What a leak takes from one rest to the next, most times. A single step is a cache that has found its size, or the undo
/// of a long text that was pasted into a field.
constexpr qint64 steadyGrowth = 1'800'000;
constexpr qint64 enough = 2'000'000'000;

/// What the platform without a display says of itself is left out.
void printMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (!text.startsWith(u"This plugin does not support"))
        std::fprintf(stderr, "%s\n", qPrintable(text));
    if (type == QtFatalMsg)
        std::abort();
}

/// The folders and settings of a user of its own.
void becomeUser(const QString& folder)
{
    const QDir root(folder);
    for (const auto* name : {"music", "pictures", "saved", "config", "state", "data", "cache"})
        root.mkdir(QLatin1String(name));
    for (const auto* kind : {"config", "state", "data", "cache"})
        qputenv("XDG_" + QByteArray(kind).toUpper() + "_HOME", root.filePath(QLatin1String(kind)).toUtf8());
    for (const auto* name : {"HOME", "TMPDIR"})
        qputenv(name, folder.toUtf8());
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const auto& name : {u"cover.jpg"_qs, u"cover.png"_qs, u"placeholder.png"_qs, u"text.mp3"_qs})
        QFile::copy(QStringLiteral(SOURCE_DIR "/tests/data/") + name, folder + u"/pictures/"_qs + name);
}

bool filesProgram(const QStringList& arguments)
{
    return QProcess::execute(QStringLiteral(SOURCE_DIR "/tests/soak/files"), arguments) == 0;
}

/// By the middle one of the steps from each rest to the next.
bool growsSteadily(const std::vector<qint64>& memory)
{
    if (memory.size() < 2)
        return false;
    std::vector<qint64> steps(memory.size());
    std::adjacent_difference(memory.begin(), memory.end(), steps.begin());
    std::sort(steps.begin() + 1, steps.end());
    return steps[memory.size() / 2] > steadyGrowth;
}

bool isSound(const QString& folder, const QStringList& arguments)
{
    becomeUser(folder);
    if (!filesProgram({u"make"_qs, folder, arguments[1], arguments[2]}))
        qFatal("The files can't be made");
    RandomUser user(arguments[2].toUInt(), arguments[0].toInt(), folder);
    QMetaObject::invokeMethod(&user, &RandomUser::act, Qt::QueuedConnection);
    QByteArray name("sonvika");
    char* program[]{name.data(), nullptr};
    const int status = sonvikaMain(1, program);
    ::alarm(0);
    const bool grows = growsSteadily(user.memory());
    std::printf("The program ended with %d; the memory in use %s\n", status, grows ? "GROWS" : "does not grow");
    user.writeRecords();
    std::fflush(stdout);
    return filesProgram({u"check"_qs, folder}) && status == 0 && !grows;
}

} // namespace

int main(int argc, char* argv[])
{
    QCommandLineParser parser;
    parser.addOptions({{u"seconds"_qs, {}, u"n"_qs, u"480"_qs},
                       {u"files"_qs, {}, u"n"_qs, u"2000"_qs},
                       {u"seed"_qs, {}, u"n"_qs, u"1"_qs}});
    QStringList arguments;
    std::transform(argv, argv + argc, std::back_inserter(arguments), PathBytes::decode);
    parser.process(arguments);
    std::printf("Seed %s\n", qPrintable(parser.value(u"seed"_qs)));
    // What the program says on its output is not of interest.
    std::cout.rdbuf(nullptr);
    qInstallMessageHandler(printMessage);
    QTemporaryDir folder(ScratchFolder::quickPlace(enough) + u"/sonvika-soak-XXXXXX"_qs);
    if (!folder.isValid())
        qFatal("There is no folder: %s", qPrintable(folder.errorString()));
    std::printf("The files are in %s\n", qPrintable(folder.path()));
    std::fflush(stdout);
    const bool good =
        isSound(folder.path(), {parser.value(u"seconds"_qs), parser.value(u"files"_qs), parser.value(u"seed"_qs)});
    // Qt can't remove what has a name that is no UTF-8.
    folder.setAutoRemove(false);
    if (good)
        std::filesystem::remove_all(folder.path().toStdString());
    return good ? 0 : 1;
}
