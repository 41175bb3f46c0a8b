#include "app/ui/MainMenu.h"

#include "app/Addresses.h"
#include "app/ViewController.h"
#include "app/ui/Actions.h"
#include "library/RecordColumns.h"
#include "library/ui/ColumnHeader.h"
#include "library/ui/QuickLookTableView.h"
#include "platform/RecentDocuments.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenuBar>

MainMenu::MainMenu(QMainWindow& window, Actions& actions, QuickLookTableView& table, ViewController& controller,
                   RecentDocuments& recentDocuments)
    : QObject(&window), window_(window), actions_(actions), table_(table), controller_(controller),
      recentDocuments_(recentDocuments)
{
    buildFile();
    buildEdit();
    buildTags();
    buildView();
    buildWindow();
    buildHelp();
    addContextMenu();
}

void MainMenu::buildFile()
{
    auto* menu = window_.menuBar()->addMenu(tr("&File"));
    menu->addActions({actions_.open, actions_.openFolder});
    auto* recent = menu->addMenu(tr("Open Re&cent"));
    actions_.lockToo(*recent);
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { fillRecent(*recent); });
    menu->addSeparator();
    menu->addActions({actions_.rename, actions_.showInFinder, actions_.remove});
    menu->addSeparator();
    auto* quit = menu->addAction(tr("&Quit"), &window_, [this] {
        window_.close();
        QCoreApplication::quit();
    });
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
}

void MainMenu::fillRecent(QMenu& menu)
{
    menu.clear();
    for (const auto& path : recentDocuments_.recentDocuments()) {
        // A mnemonic is not meant by a file's name.
        const QString name = QFileInfo(path).fileName().replace(QLatin1Char('&'), QLatin1String("&&"));
        menu.addAction(name, &controller_, [this, path] { controller_.openPath(path); })->setToolTip(path);
    }
    if (menu.isEmpty())
        menu.addAction(tr("No Recent Files"))->setEnabled(false);
}

void MainMenu::buildEdit()
{
    auto* menu = window_.menuBar()->addMenu(tr("&Edit"));
    menu->addActions({actions_.selectAll, actions_.deselectAll});
    menu->addSeparator();
    menu->addActions({actions_.moveUp, actions_.moveDown, actions_.erase});
    menu->addSeparator();
    menu->addAction(actions_.find);
    menu->addSeparator();
    menu->addAction(actions_.preferences);
}

void MainMenu::buildTags()
{
    auto* menu = window_.menuBar()->addMenu(tr("&Tags"));
    menu->addAction(actions_.numberTracks);
    menu->addSeparator();
    menu->addActions(actions_.artCommands());
    menu->addSeparator();
    menu->addActions({actions_.removeUnsupportedTags, actions_.removeAllTags});
}

void MainMenu::buildView()
{
    auto* menu = window_.menuBar()->addMenu(tr("&View"));
    menu->addAction(actions_.quickLook);
    auto* columns = menu->addMenu(tr("&Columns"));
    connect(columns, &QMenu::aboutToShow, this, [this, columns] {
        columns->clear();
        table_.columns().fillMenu(*columns);
    });
    auto* sorts = menu->addMenu(tr("&Sort By"));
    actions_.lockToo(*sorts);
    addSortMenu(*sorts);
}

void MainMenu::addSortMenu(QMenu& menu)
{
    auto* sorts = new QActionGroup(&menu);
    sorts->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (int column = 0; column < RecordColumns::Count; ++column) {
        auto* action = menu.addAction(RecordColumns::heading(column), &table_, [this, column] {
            const auto* header = table_.horizontalHeader();
            const bool turns =
                header->sortIndicatorSection() == column && header->sortIndicatorOrder() == Qt::AscendingOrder;
            table_.sortByColumn(column, turns ? Qt::DescendingOrder : Qt::AscendingOrder);
        });
        action->setCheckable(true);
        sorts->addAction(action);
        connect(&menu, &QMenu::aboutToShow, action, [this, action, column] {
            action->setChecked(table_.horizontalHeader()->sortIndicatorSection() == column);
        });
    }
}

void MainMenu::buildWindow()
{
    auto* menu = window_.menuBar()->addMenu(tr("&Window"));
    menu->addAction(tr("Mi&nimise"), QKeySequence(Qt::CTRL | Qt::Key_M), &window_, &QWidget::showMinimized);
    auto* full = menu->addAction(tr("&Full Screen"), QKeySequence(QKeySequence::FullScreen), &window_,
                                 [this] { window_.setWindowState(window_.windowState() ^ Qt::WindowFullScreen); });
    full->setMenuRole(QAction::NoRole);
    menu->addSeparator();
    menu->addAction(tr("&Bring to Front"), &controller_, &ViewController::showWindow);
}

void MainMenu::buildHelp()
{
    auto* menu = window_.menuBar()->addMenu(tr("&Help"));
    menu->addAction(tr("&Support Page"), this, [] { QDesktopServices::openUrl(Addresses::support()); });
    menu->addAction(tr("Send &Feedback…"), this, [] { QDesktopServices::openUrl(Addresses::feedback()); });
    menu->addSeparator();
    menu->addAction(actions_.about);
}

void MainMenu::addContextMenu()
{
    table_.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&table_, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        QMenu menu;
        for (auto* action : actions_.rowCommands()) {
            if (action)
                menu.addAction(action);
            else
                menu.addSeparator();
        }
        menu.exec(table_.viewport()->mapToGlobal(position));
    });
}
