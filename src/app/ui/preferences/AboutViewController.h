#pragma once

#include <QWidget>

class QBoxLayout;
class QTextBrowser;

/// The pane that tells what the program is, in which version, and who helped.
class AboutViewController : public QWidget {
    Q_OBJECT

public:
    explicit AboutViewController(QWidget* parent = nullptr);

    void openSocialPage();
    void openWebSite();

private:
    void addHeading(QBoxLayout& column);
    void addButtons(QBoxLayout& column);
    static QString creditsResource();
    /// Shows none when the version of the program is not known.
    void showCredits();

    QTextBrowser* textView_;
};
