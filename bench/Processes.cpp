#include "Corpus.h"
#include "Measure.h"
#include "Painting.h"
#include "Parts.h"
#include "app/Translations.h"
#include "app/ui/Program.h"
#include "platform/DBusApplication.h"
#include "platform/SessionBus.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLocale>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int starts = 31;

struct Memory {
    double resident;
    double allocated;
};

Memory memory()
{
    long long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    const auto heap = mallinfo2();
    return {static_cast<double>(pages) * static_cast<double>(::sysconf(_SC_PAGESIZE)),
            static_cast<double>(heap.uordblks) + static_cast<double>(heap.hblkhd)};
}

QByteArray runSelf(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished(-1);
    return process.readAllStandardOutput();
}

/// @return the milliseconds from here until the program says that its window was painted.
double startTime(const QString& program, const QStringList& arguments)
{
    QProcess process;
    const auto start = std::chrono::steady_clock::now().time_since_epoch().count();
    process.start(program, arguments);
    process.waitForFinished(-1);
    const auto painted = process.readAllStandardOutput().trimmed().toLongLong();
    if (painted == 0)
        throw std::runtime_error("a window was not painted");
    return static_cast<double>(painted - start) / 1e6;
}

} // namespace

void Parts::memory(const Corpus& corpus, int largest)
{
    std::printf("Memory for each record in the program's window, bytes (a process for each line)\n");
    std::printf("  %7s %10s %10s %24s\n", "files", "resident", "allocated", "load, microseconds/file");
    for (const int count : {1'000, 10'000, 50'000}) {
        if (count <= largest)
            std::printf("%s", runSelf({QStringLiteral("--child-memory"), corpus.folder(count)}).constData());
        std::fflush(stdout);
    }
    std::printf("\n");
}

void Parts::memoryChild(const QString& folder)
{
    Program program;
    Painting painting(*program.window.findChild<QAbstractItemView*>(QStringLiteral("table"))->viewport());
    program.window.show();
    painting.wait();
    const Memory before = ::memory();
    const double time = Measure::milliseconds([&] {
        program.controller.openPath(folder);
        painting.wait();
    });
    const Memory after = ::memory();
    const double count = std::max(1, program.list.rowCount());
    std::printf("  %7.0f %10.0f %10.0f %24.1f\n", count, (after.resident - before.resident) / count,
                (after.allocated - before.allocated) / count, time * 1000 / count);
}

void Parts::start()
{
    const QString self = QCoreApplication::applicationFilePath();
    const QString bare = self + QLatin1String("-window");
    std::vector<double> furnished;
    const auto startEmpty = [&] {
        furnished.push_back(startTime(bare, {QStringLiteral("--furnished")}));
        return startTime(bare, {});
    };
    const auto startOwn = [&] { return startTime(self, {QStringLiteral("--child-start")}); };
    startEmpty();
    startOwn();
    const auto times = Measure::compare(starts, startEmpty, startOwn);
    std::printf("Start to a painted window, milliseconds (median of %d)\n", starts);
    std::printf("  empty window %.1f, Sonvika %.1f, ratio %.2f (aim 1.5)\n", times.bare, times.own, times.ratio());
    std::printf("  for comparison, a window with a menu, a line edit and an empty table: %.1f, ratio %.2f\n\n",
                Measure::median(furnished), Measure::median(furnished) / times.bare);
}

// As the program's own main function.
void Parts::startChild(int argc, char* argv[])
{
    SessionBus::abandonUnlessItAnswers();
    const QApplication application(argc, argv);
    Translations::install(QLocale::system());
    DBusApplication onTheBus;
    onTheBus.claim();
    Program program;
    program.recovery.start();
    program.panels.setParentWindow(&program.window);
    program.window.attachPreview(program.preview);
    program.window.attachFailures(program.failures);
    program.window.attachWork(program.work);
    program.delegate.applicationWillFinishLaunching();
    Painting::showAndExit(program.window);
}
