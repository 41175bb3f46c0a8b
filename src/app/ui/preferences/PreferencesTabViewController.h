#pragma once

#include <QMap>
#include <QSize>
#include <QVariantAnimation>
#include <QWidget>

class NotificationPoster;
class QBoxLayout;
class QButtonGroup;
class QToolButton;
class Updater;
class UserDefaults;

/// The preferences window: a row of buttons, one for each pane, above the pane that is chosen. It takes the size of
/// that pane, with its top edge staying where it is, and remembers the pane when it closes. Not modal; it is made once
/// and shown again.
class PreferencesTabViewController : public QWidget {
    Q_OBJECT

public:
    /// The last one.
    static constexpr int aboutPane = 2;

    PreferencesTabViewController(UserDefaults& defaults, NotificationPoster& notifier, Updater& updater,
                                 QWidget* parent = nullptr);
    ~PreferencesTabViewController() override;

    /// By how much the language in use widens the window: 0 unless its translation is another whole number.
    static int preferencesPadding();

    int selectedPane() const { return selected_; }
    /// Switches to a pane, at once while the window is hidden; nothing happens for one that does not exist.
    void selectPane(int index);

    /// How wide every pane is.
    double prefWidth() const { return prefWidth_; }
    /// The size of each pane by its title, measured whenever the window appears.
    const QMap<QString, QSize>& tabViewSizes() const { return tabViewSizes_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildBar(QBoxLayout& column);
    QToolButton* makeButton(const QString& identifier);
    void viewDidLoad();
    void viewWillAppear();
    void measurePanes();
    void viewWillDisappear();
    void transition(QWidget& from, QWidget& to);
    void transitionDidEnd();
    /// As large as the pane and the bar above it.
    QSize windowSize(QWidget& pane);
    QSize fittingSize(QWidget& pane) const;
    QWidget& pane(int index) const { return *panes_.at(index); }

    UserDefaults& defaults_;
    double prefWidth_ = 490;
    QMap<QString, QSize> tabViewSizes_;
    QList<QWidget*> panes_;
    QWidget* bar_ = nullptr;
    QWidget* stage_ = nullptr;
    QButtonGroup* buttons_ = nullptr;
    QVariantAnimation resizing_;
    int selected_ = 0;
};
