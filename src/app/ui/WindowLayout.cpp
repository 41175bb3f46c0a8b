#include "app/ui/WindowLayout.h"

#include "library/ui/ColumnHeader.h"
#include "platform/UserDefaults.h"

#include <QSplitter>

namespace {

constexpr int settlesAfter = 500;

} // namespace

WindowLayout::WindowLayout(QWidget& window, QSplitter& splitter, ColumnHeader& columns, UserDefaults& defaults)
    : QObject(&window), window_(window), splitter_(splitter), columns_(columns), defaults_(defaults)
{
    restorePlace();
    splitter_.restoreState(defaults_.dataForKey(DefaultsKey::splitterState));
    columns_.restore(defaults_.dataForKey(DefaultsKey::tableHeaderState));
    watch();
}

void WindowLayout::store()
{
    defaults_.setData(DefaultsKey::windowGeometry, window_.saveGeometry());
    defaults_.setData(DefaultsKey::splitterState, splitter_.saveState());
    defaults_.setData(DefaultsKey::tableHeaderState, columns_.saveState());
    defaults_.synchronize();
}

void WindowLayout::restorePlace()
{
    window_.restoreGeometry(defaults_.dataForKey(DefaultsKey::windowGeometry));
}

void WindowLayout::watch()
{
    settled_.setSingleShot(true);
    settled_.setInterval(settlesAfter);
    settled_.callOnTimeout(this, &WindowLayout::store);
    const auto changed = [this] { settled_.start(); };
    connect(&columns_, &QHeaderView::sectionResized, this, changed);
    connect(&columns_, &QHeaderView::sectionMoved, this, changed);
    connect(&columns_, &QHeaderView::sortIndicatorChanged, this, changed);
    connect(&splitter_, &QSplitter::splitterMoved, this, changed);
}
