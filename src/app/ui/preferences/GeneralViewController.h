#pragma once

#include <QWidget>

class NotificationPoster;
class QCheckBox;
class QComboBox;
class UserDefaults;

/// The pane with the settings of daily work. Every change is on disk at once.
class GeneralViewController : public QWidget {
    Q_OBJECT

public:
    GeneralViewController(UserDefaults& defaults, NotificationPoster& notifier, QWidget* parent = nullptr);

    /// Fills the controls from the settings, as happens whenever the pane appears.
    void updateButtons();
    /// Stores the chosen image format.
    void selectFormat();
    /// Flips whether notices are posted. Once they are, asks the desktop for permission; after a refusal the check box
    /// says what the user chose until the pane appears again.
    void toggleNotifictionsState();

protected:
    void showEvent(QShowEvent* event) override;

private:
    UserDefaults& defaults_;
    NotificationPoster& notifier_;
    QCheckBox* notificationsButton_;
    QComboBox* popupButton_;
};
