#include "Painting.h"

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QTableView>
#include <QToolBar>

/// An empty window or, with any argument, one with an empty table, a menu and a tool bar.
int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    QMainWindow window;
    if (argc > 1) {
        window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Open"));
        window.addToolBar(QStringLiteral("Toolbar"))->addWidget(new QLineEdit);
        window.setCentralWidget(new QTableView);
    }
    Painting::showAndExit(window);
}
