#include "app/ui/preferences/UpdatesViewController.h"

#include "app/Updater.h"
#include "app/ui/LinkLabel.h"
#include "app/ui/preferences/PaneForm.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

UpdatesViewController::UpdatesViewController(Updater& updater, QWidget* parent)
    : QWidget(parent), updater_(updater),
      checkForUpdatesButton_(new QCheckBox(tr("&Check for updates automatically"))),
      autoInstallButton_(new QCheckBox(tr("Download and &install automatically"))), intervalPopup_(new QComboBox)
{
    setWindowTitle(tr("Updates"));
    buildForm();
    readSettings();
    connectControls();
    showState();
}

void UpdatesViewController::buildForm()
{
    checkForUpdatesButton_->setObjectName(QStringLiteral("checkForUpdatesButton"));
    autoInstallButton_->setObjectName(QStringLiteral("autoInstallButton"));
    autoInstallButton_->setEnabled(false);
    intervalPopup_->setObjectName(QStringLiteral("intervalPopup"));
    intervalPopup_->setAccessibleName(tr("How often to check for updates"));
    intervalPopup_->setPlaceholderText(tr("Other"));
    intervalPopup_->addItem(tr("Daily"), Updater::daily);
    intervalPopup_->addItem(tr("Weekly"), Updater::weekly);
    intervalPopup_->addItem(tr("Monthly"), Updater::monthly);

    PaneForm form(*this);
    form.addRow(tr("Updates:"), checkForUpdatesButton_);
    form.addRow(tr("&How often:"), intervalPopup_);
    state_ = new LinkLabel;
    form.addNote(state_);
    state_->setObjectName(QStringLiteral("state"));
    form.addRow({}, autoInstallButton_);
    form.addNote(tr("Sonvika tells you that there is a newer version, and leaves installing it to you."));
}

void UpdatesViewController::readSettings()
{
    checkForUpdatesButton_->setChecked(updater_.automaticallyChecksForUpdates());
    autoInstallButton_->setChecked(updater_.automaticallyDownloadsUpdates());
    intervalPopup_->setCurrentIndex(intervalPopup_->findData(updater_.updateCheckInterval()));
}

void UpdatesViewController::connectControls()
{
    connect(checkForUpdatesButton_, &QAbstractButton::toggled, &updater_, &Updater::setAutomaticallyChecksForUpdates);
    connect(autoInstallButton_, &QAbstractButton::toggled, &updater_, &Updater::setAutomaticallyDownloadsUpdates);
    connect(intervalPopup_, &QComboBox::activated, this,
            [this] { updater_.setUpdateCheckInterval(intervalPopup_->currentData().toInt()); });
    connect(&updater_, &Updater::updateAvailable, this, &UpdatesViewController::showState);
}

void UpdatesViewController::showState()
{
    if (!updater_.isConfigured()) {
        state_->setText(tr("No update feed is set up on this computer, so nothing is checked until there is one."));
    } else if (const auto& update = updater_.available()) {
        const QString page = update->page.toString(QUrl::FullyEncoded).toHtmlEscaped();
        state_->setText(
            tr("Version %1 is available: <a href=\"%2\">see what is new</a>.").arg(update->version, page));
    }
    state_->setVisible(!state_->text().isEmpty());
}
