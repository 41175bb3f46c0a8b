#include "cli/ErrorLines.h"

#include "cli/Printable.h"
#include "platform/PathBytes.h"

#include <QtGlobal>

#include <unistd.h>

void ErrorLines::noteFailure(const Failure& failure)
{
    QString message = failure.message;
    for (const char* join : {" for: ", " at path: ", ": "})
        message.remove(QLatin1String(join) + failure.path);
    report(failure.path, failure.reason.isEmpty() ? message : failure.reason);
}

void ErrorLines::report(const QString& path, const QString& reason)
{
    ++count_;
    if (beforeLine)
        beforeLine();
    const QByteArray line = PathBytes::encode(Printable::line(path)) + ": " + Printable::line(reason).toUtf8() + '\n';
    // There is nobody left to tell when this fails.
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, line.constData(), static_cast<std::size_t>(line.size()));
}
