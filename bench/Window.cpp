#include "Corpus.h"
#include "Measure.h"
#include "Painting.h"
#include "Parts.h"
#include "app/ui/Program.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int repetitions = 5;

void sendKey(QWidget& widget, int key, const QString& text)
{
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

/// Fills the search field and empties it again. @return the milliseconds that each key takes.
std::vector<double> type(QLineEdit& field, const QString& word, Painting& painting)
{
    std::vector<double> times;
    for (qsizetype i = 0; i < word.size() * 2; ++i) {
        painting.settle();
        times.push_back(Measure::milliseconds([&] {
            if (i < word.size())
                sendKey(field, word[i].toUpper().unicode(), word[i]);
            else
                sendKey(field, Qt::Key_Backspace, {});
            painting.wait();
        }));
    }
    return times;
}

/// Prints the median and the worst over the keys, each key being the median of its repetitions.
void printTyping(QLineEdit& field, const char* word, Painting& painting)
{
    std::vector<std::vector<double>> runs;
    runs.reserve(repetitions);
    for (int i = 0; i < repetitions; ++i)
        runs.push_back(type(field, QLatin1String(word), painting));
    std::vector<double> keys;
    for (std::size_t key = 0; key < runs.front().size(); ++key) {
        std::vector<double> times;
        times.reserve(runs.size());
        for (const auto& run : runs)
            times.push_back(run[key]);
        keys.push_back(Measure::median(times));
    }
    std::printf("    %-10s %8.1f, worst key %.1f\n", word, Measure::median(keys),
                *std::max_element(keys.begin(), keys.end()));
}

double selectAllTime(ViewController& controller, Painting& painting)
{
    std::vector<double> times;
    for (int i = 0; i < repetitions; ++i) {
        controller.deselectAll();
        painting.wait();
        painting.settle();
        times.push_back(Measure::milliseconds([&] {
            controller.selectAll();
            painting.wait();
        }));
    }
    return Measure::median(times);
}

/// The time until a window that a command opens is painted.
template <class Open>
double openingTime(Open open)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    return Measure::milliseconds([&] {
        open();
        for (auto* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && !before.contains(window))
                Painting(*window).wait();
        }
    });
}

void windows(Program& program)
{
    program.list.selection().setRows({0});
    std::printf("Windows, milliseconds until painted for the first time (aims 100 and 150)\n");
    std::printf("  %-12s %8.1f\n", "preferences", openingTime([&] { program.preferences.showPreferences(); }));
    std::printf("  %-12s %8.1f\n\n", "preview", openingTime([&] { program.preview.openQuickLook(); }));
}

} // namespace

void Parts::list(const Corpus& corpus, int largest)
{
    Program program;
    program.window.show();
    program.controller.openPath(corpus.folder(std::min(largest, 10'000)));
    auto& field = *program.window.findChild<QLineEdit*>(QStringLiteral("searchField"));
    Painting painting(*program.window.findChild<QAbstractItemView*>(QStringLiteral("table"))->viewport());
    painting.wait();

    std::printf("The list with %d rows, milliseconds until painted\n", program.list.rowCount());
    std::printf("  %-12s %8.1f\n", "select all", selectAllTime(program.controller, painting));
    for (const bool selected : {true, false}) {
        std::printf("  typing with %s selected\n", selected ? "all" : "none");
        for (const auto* word : {"lantern", "benchmark", "zzz"})
            printTyping(field, word, painting);
        program.controller.deselectAll();
        painting.wait();
    }
    std::printf("\n");
    windows(program);
}
