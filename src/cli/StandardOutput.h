#pragma once

#include <QByteArray>

/// The standard output, gathered and written in large pieces; a piece that can't be written is never lost silently.
class StandardOutput {
public:
    ~StandardOutput() { flush(); }

    /// Does nothing once something could not be written.
    void write(const QByteArray& bytes);
    void flush();

    /// The errno of the first write that failed; 0 for none.
    int error() const { return error_; }

    static bool isTerminal();

private:
    QByteArray pending_;
    int error_ = 0;
};
