#pragma once

#include <QString>

#include <ostream>
#include <sstream>

/// Collects what is written to a standard stream while it exists.
class ConsoleCapture {
public:
    explicit ConsoleCapture(std::ostream& stream) : stream_(stream), before_(stream.rdbuf(text_.rdbuf())) {}
    ~ConsoleCapture() { stream_.rdbuf(before_); }
    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    QString text() const { return QString::fromStdString(text_.str()); }

private:
    std::ostringstream text_;
    std::ostream& stream_;
    std::streambuf* before_;
};
