#pragma once

#include <QPointer>
#include <QStatusBar>
#include <QTimer>

class ArrayController;
class FailureLog;
class LongWork;
class MessagesWindow;
class QLabel;
class QUrl;

/// The line at the bottom of the main window: how many files there are and what was done to them, work that takes long,
/// what went wrong, and news of a later version.
class StatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit StatusLine(ArrayController& list, QWidget* parent = nullptr);

    /// Shows long work, with a button to cancel it.
    void attachWork(LongWork& work);
    /// Counts failures in a button that shows them in the messages window. @return the button.
    QWidget& attachFailures(FailureLog& failures);
    /// Tells what a command has done, after the counts, until the selection changes.
    void showDone(const QString& text);
    /// Tells that there is a newer version, with a link to its page.
    void showUpdate(const QString& version, const QUrl& page);

private:
    void showCounts();
    void showStopped(qsizetype done, qsizetype count);
    void showMessages(FailureLog& failures);

    ArrayController& list_;
    QLabel* text_;
    QString done_;
    /// While it runs, the text tells of something else than the numbers.
    QTimer passing_;
    QPointer<MessagesWindow> messagesWindow_;
};
