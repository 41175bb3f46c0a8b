#include "Corpus.h"
#include "Measure.h"
#include "Painting.h"
#include "Parts.h"
#include "app/ui/Program.h"
#include "naming/FileNameFormat.h"
#include "naming/RenamePlan.h"
#include "naming/ui/TokenField.h"

#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace {

constexpr int runs = 7;
constexpr int typedKeys = 20;

/// Gives the files other names and then the old ones again. @return the milliseconds for once.
double renameBare(const std::vector<AudioFilePtr>& records)
{
    const auto rename = [](const QString& from, const QString& to) {
        if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
            throw std::runtime_error("a file could not be renamed");
    };
    const double time = Measure::milliseconds([&] {
        for (const auto& record : records)
            rename(record->path, record->path + QStringLiteral(".new"));
    });
    for (const auto& record : records)
        rename(record->path + QStringLiteral(".new"), record->path);
    return time;
}

void compare(Program& program)
{
    const auto records = program.list.selectedObjects();
    int names = 0;
    const auto rename = [&] {
        const QStringList format{FileNameFormat::sortedKeys().at(1), QString::number(++names)};
        return Measure::milliseconds([&] { program.controller.renameFiles(format); });
    };
    const auto times = Measure::compare(
        runs, [&] { return renameBare(records); }, rename);
    std::printf("  rename: bare loop %.0f ms, Sonvika %.0f ms, ratio %.2f (aim 2.0)\n", times.bare, times.own,
                times.ratio());
    std::vector<double> plans;
    plans.reserve(runs);
    for (int i = 0; i < runs; ++i)
        plans.push_back(Measure::milliseconds([&] {
            if (RenamePlan(records, {FileNameFormat::sortedKeys().at(1), QStringLiteral("x")}).failing() != 0)
                throw std::runtime_error("the plan is wrong");
        }));
    std::printf("  the plan: %.0f ms\n", Measure::median(plans));
}

void typing(Program& program)
{
    program.controller.showFormatWindow();
    auto& field = *program.window.findChild<TokenField*>();
    auto& summary = *program.window.findChild<QLabel*>(QStringLiteral("summary"));
    Painting painting(*field.viewport());
    painting.wait();
    std::vector<double> keys;
    for (int i = 0; i < typedKeys; ++i) {
        painting.settle();
        keys.push_back(Measure::milliseconds([&] {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
            QCoreApplication::sendEvent(&field, &press);
            painting.wait();
        }));
    }
    summary.clear();
    const double plan = Measure::milliseconds([&] {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
        QCoreApplication::sendEvent(&field, &press);
        while (summary.text().isEmpty())
            QCoreApplication::processEvents();
    });
    std::printf("  typing in the format: median %.1f ms a key, worst %.1f; the whole plan is shown %.0f ms after the "
                "last (aim 200)\n",
                Measure::median(keys), *std::max_element(keys.begin(), keys.end()), plan);
}

} // namespace

void Parts::renaming(const Corpus& corpus, int largest)
{
    Program program;
    program.window.show();
    const QString folder = corpus.folder(std::min(largest, 10'000), Corpus::Mixed);
    program.controller.openPath(folder);
    program.controller.selectAll();
    std::printf("Renaming %d files\n", program.list.rowCount());
    compare(program);
    typing(program);
    std::printf("\n");
    // The names are no longer those of the corpus.
    QDir(folder).removeRecursively();
}
