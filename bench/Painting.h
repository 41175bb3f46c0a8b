#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

/// Watches a widget being painted.
class Painting : public QObject {
public:
    explicit Painting(QWidget& widget) { widget.installEventFilter(this); }

    /// Handles what is left to do and forgets that it was painted.
    void settle()
    {
        QCoreApplication::processEvents();
        happened_ = false;
    }

    /// Handles events until the widget is painted.
    void wait()
    {
        while (!std::exchange(happened_, false))
            QCoreApplication::processEvents();
    }

    /// Shows the window, prints when it had been painted (nanoseconds of the steady clock), and ends the process.
    [[noreturn]] static void showAndExit(QWidget& window)
    {
        Painting painting(window);
        window.show();
        painting.wait();
        const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%lld\n", static_cast<long long>(now.count()));
        std::fflush(stdout);
        std::_Exit(0);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        happened_ = happened_ || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool happened_ = false;
};
