#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class Updater;

/// The pane with the settings of the Updater, each stored as soon as it is changed, and with what the last check found.
class UpdatesViewController : public QWidget {
    Q_OBJECT

public:
    explicit UpdatesViewController(Updater& updater, QWidget* parent = nullptr);

private:
    void buildForm();
    void readSettings();
    void connectControls();
    void showState();

    Updater& updater_;
    QCheckBox* checkForUpdatesButton_;
    QCheckBox* autoInstallButton_;
    /// Its items carry seconds. Nothing is selected for an interval that is none of them.
    QComboBox* intervalPopup_;
    QLabel* state_ = nullptr;
};
