#include "Corpus.h"
#include "Measure.h"
#include "Parts.h"
#include "app/ui/Program.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int runs = 11;

double edit(FieldEditor& editor)
{
    static int value = 0;
    return Measure::milliseconds(
        [&] { editor.applyEdit(QStringLiteral("TITLE"), QStringLiteral("Title %1").arg(++value % 10)); });
}

} // namespace

void Parts::work(const Corpus& corpus, int largest)
{
    Program program;
    program.window.attachWork(program.work);
    program.window.show();
    program.controller.openPath(corpus.folder(std::min(largest, 10'000), Corpus::Mixed));
    program.controller.selectAll();
    UnwatchedWork unwatched;
    FieldEditor unseen(program.list, program.writer, unwatched);
    std::printf("Editing the title of %d files\n", program.list.rowCount());
    edit(unseen);
    const auto times = Measure::compare(
        runs, [&] { return edit(unseen); }, [&] { return edit(program.editor); });
    std::printf("  without the bar %.0f ms, with it %.0f ms, ratio %.3f (aim 1.03)\n\n", times.bare, times.own,
                times.ratio());
}
