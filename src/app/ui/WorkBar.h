#pragma once

#include <QWidget>

class ElidedLabel;
class LongWork;
class QProgressBar;
class QPushButton;

/// The part of the status line that shows long work: the file, how far the work is, and a button to cancel it.
class WorkBar : public QWidget {
    Q_OBJECT

public:
    explicit WorkBar(LongWork& work, QWidget* parent = nullptr);

    /// The least that it needs: it is the first to give way.
    QSize sizeHint() const override { return minimumSizeHint(); }

private:
    void showWork(qsizetype done, qsizetype count, const QString& path);
    bool isCancelAt(const QWindow& window, const QPoint& place) const;

    ElidedLabel* file_;
    QProgressBar* bar_;
    QPushButton* cancel_;
};
