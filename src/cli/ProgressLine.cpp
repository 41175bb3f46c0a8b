#include "cli/ProgressLine.h"

#include "cli/Printable.h"
#include "cli/StopSignals.h"

#include <QFileInfo>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr qint64 patience = 1000;
constexpr qint64 interval = 100;

void print(const QByteArray& text)
{
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, text.constData(), static_cast<std::size_t>(text.size()));
}

int terminalWidth()
{
    constexpr int usual = 80;
    struct winsize size {};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

} // namespace

void ProgressLine::workBegins(qsizetype count)
{
    count_ = count;
    begun_ = 0;
    if (!sinceStart_.isValid())
        sinceStart_.start();
}

bool ProgressLine::fileBegins(const QString& path)
{
    if (StopSignals::received() != 0)
        return false;
    ++begun_;
    const bool isDue =
        sinceStart_.hasExpired(patience) && (!sinceShown_.isValid() || sinceShown_.hasExpired(interval));
    if (isDue && !isQuiet_ && ::isatty(STDERR_FILENO) == 1)
        show(path);
    return true;
}

void ProgressLine::workEnds()
{
    clear();
}

void ProgressLine::clear()
{
    if (isShown_)
        print("\r\033[K");
    isShown_ = false;
}

void ProgressLine::show(const QString& path)
{
    // A wide character takes two columns.
    const QString text =
        QStringLiteral("%1 of %2  %3").arg(begun_).arg(count_).arg(Printable::line(QFileInfo(path).fileName()));
    QString line;
    int width = 1;
    for (const QChar character : text) {
        width += character.unicode() < 0x1100 ? 1 : 2;
        if (width > terminalWidth())
            break;
        line += character;
    }
    print("\r" + line.toUtf8() + "\033[K");
    isShown_ = true;
    sinceShown_.start();
}
