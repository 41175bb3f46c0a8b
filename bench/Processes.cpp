#include "Corpus.h"
#include "Measure.h"
#include "Painting.h"
#include "Parts.h"
#include "app/ui/Program.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

#include <malloc.h>
#include <unistd.h>

namespace {

constexpr int starts = 11;

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
    return static_cast<double>(process.readAllStandardOutput().trimmed().toLongLong() - start) / 1e6;
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
    std::vector<double> empty;
    std::vector<double> furnished;
    std::vector<double> own;
    std::vector<double> ratios;
    startTime(bare, {});
    startTime(self, {QStringLiteral("--child-start")});
    for (int i = 0; i < starts; ++i) {
        empty.push_back(startTime(bare, {}));
        own.push_back(startTime(self, {QStringLiteral("--child-start")}));
        ratios.push_back(own.back() / empty.back());
        furnished.push_back(startTime(bare, {QStringLiteral("--furnished")}));
    }
    std::printf("Start to a painted window, milliseconds (median of %d)\n", starts);
    std::printf("  empty window %.1f, Sonvika %.1f, ratio %.2f\n", Measure::median(empty), Measure::median(own),
                Measure::median(ratios));
    std::printf("  for comparison, a window with a menu, a line edit and an empty table: %.1f\n\n",
                Measure::median(furnished));
}

void Parts::startChild()
{
    Program program;
    program.panels.setParentWindow(&program.window);
    Painting::showAndExit(program.window);
}
