#include "cli/Commands.h"
#include "cli/Printable.h"
#include "platform/PathBytes.h"
#include "platform/StandardStreams.h"

#include <QCoreApplication>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <iterator>

#include <unistd.h>

namespace {

constexpr int wrongUsage = 2;

/// The streams belong to what the commands say. The engine's diagnostics are for those who work on it.
void silenceDiagnostics()
{
    std::cout.rdbuf(nullptr);
    std::cerr.rdbuf(nullptr);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

int print(const QByteArray& text)
{
    StandardOutput output;
    output.write(text);
    output.flush();
    if (output.error() != 0)
        ErrorLines().report(QStringLiteral("standard output"), qt_error_string(output.error()));
    return output.error() == 0 ? 0 : 1;
}

int carryOut(const QStringList& arguments)
{
    const CommandLine line = CommandLine::parse(arguments);
    switch (line.command) {
    case CommandLine::Command::Help:
        return print(line.help.toUtf8());
    case CommandLine::Command::Version:
        return print("sonvika-cli " SONVIKA_VERSION "\n");
    default:
        return Commands(line).run();
    }
}

} // namespace

int main(int argc, char* argv[])
{
    StandardStreams::occupy();
    silenceDiagnostics();
    std::signal(SIGPIPE, SIG_IGN);
    // A write beyond a limit then fails, and is told like any other failure.
    std::signal(SIGXFSZ, SIG_IGN);
    QStringList arguments;
    std::transform(argv + std::min(argc, 1), argv + argc, std::back_inserter(arguments), PathBytes::decode);
    const QCoreApplication application(argc, argv);
    try {
        return carryOut(arguments);
    } catch (const UsageError& error) {
        const QByteArray text =
            "sonvika-cli: " + PathBytes::encode(Printable::line(error.message)) + '\n' + error.hint.toUtf8() + '\n';
        [[maybe_unused]] const auto written =
            ::write(STDERR_FILENO, text.constData(), static_cast<std::size_t>(text.size()));
        return wrongUsage;
    }
}
