#include "platform/FontConfiguration.h"

#include <QCoreApplication>
#include <QTest>

#include <chrono>
#include <thread>

namespace {

QString warning;

} // namespace

class FontConfigurationTest : public QObject {
    Q_OBJECT

private slots:
    void leavesTheMainThreadToTheApplication() { QCOMPARE(warning, QString()); }
};

int main(int argc, char* argv[])
{
    // Before anything of Qt's, as in the program; the other thread is in the middle of its work.
    const auto reading = FontConfiguration::readAhead();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { warning = text; });
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(nullptr);
    FontConfigurationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "FontConfigurationTest.moc"
