#include <QCoreApplication>

/// What every Qt program without a window costs to start.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    return 0;
}
