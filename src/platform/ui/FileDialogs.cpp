#include "platform/ui/FileDialogs.h"

#include "platform/ui/DesktopWindow.h"
#include "platform/ui/SaveDialog.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMimeDatabase>

namespace {

const QLatin1String audioPanel("audioPanel");
const QLatin1String folderPanel("folderPanel");
const QLatin1String imagePanel("imagePanel");
const QLatin1String savePanel("savePanel");
constexpr const char* subjectOf = "subject";

void name(QFileDialog& dialog, const QString& panel, const QStringList& subject)
{
    dialog.setObjectName(panel);
    dialog.setProperty(subjectOf, subject);
}

} // namespace

void FileDialogs::chooseAudioFiles(const QString& title, Chosen chosen)
{
    if (isOpen(audioPanel))
        return;
    auto& dialog = makeDialog(audioPanel, title, QFileDialog::ExistingFiles);
    dialog.setNameFilter(QCoreApplication::translate("FileDialogs", "MP3 and M4A files")
                         + QStringLiteral(" (*.mp3 *.m4a)"));
    show(dialog, std::move(chosen));
}

void FileDialogs::chooseAudioFolder(const QString& title, Chosen chosen)
{
    if (!isOpen(folderPanel))
        show(makeDialog(folderPanel, title, QFileDialog::Directory), std::move(chosen));
}

void FileDialogs::chooseImageFiles(const ImagePanelRequest& request)
{
    if (isOpen(imagePanel, request.subject))
        return;
    auto& dialog = makeDialog(imagePanel, request.title, QFileDialog::ExistingFiles, request.subject);
    QStringList patterns;
    for (const auto& type : request.mimeTypes) {
        for (const auto& pattern : QMimeDatabase().mimeTypeForName(type).globPatterns())
            patterns += {pattern, pattern.toUpper()};
    }
    dialog.setNameFilter(QCoreApplication::translate("FileDialogs", "Images")
                         + QStringLiteral(" (%1)").arg(patterns.join(QLatin1Char(' '))));
    show(dialog, request.chosen);
}

void FileDialogs::chooseSavePath(const SavePanelRequest& request)
{
    if (isOpen(savePanel, request.subject))
        return;
    SavePanelRequest remembering = request;
    remembering.chosen = [this, chosen = request.chosen](const QString& path) {
        lastFolder_ = QFileInfo(path).absolutePath();
        chosen(path);
    };
    auto* dialog = new SaveDialog(window_, remembering, lastFolder_);
    name(*dialog, savePanel, request.subject);
    dialog->show();
}

AccessPanelAnswer FileDialogs::runAccessPanel(const AccessPanelRequest& request)
{
    QFileDialog dialog(window_, request.title, lastFolder_.isEmpty() ? request.directory : lastFolder_);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOptions(QFileDialog::ReadOnly | QFileDialog::DontUseNativeDialog);
    if (!request.prompt.isEmpty())
        dialog.setLabelText(QFileDialog::Accept, request.prompt);
    // The desktop's own dialogs have no place for a message.
    if (auto* layout = qobject_cast<QGridLayout*>(dialog.layout()))
        layout->addWidget(new QLabel(request.message, &dialog), layout->rowCount(), 0, 1, -1);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return {AccessPanelAnswer::OK, dialog.selectedFiles().value(0)};
}

bool FileDialogs::isOpen(const QString& panel, const QStringList& subject)
{
    const auto open =
        window_ ? window_->findChildren<QFileDialog*>(panel, Qt::FindDirectChildrenOnly) : QList<QFileDialog*>();
    for (auto* dialog : open) {
        // One that is closing is still there.
        if (!dialog->isVisible())
            continue;
        if (dialog->property(subjectOf).toStringList() == subject) {
            DesktopWindow::bringToFront(*dialog);
            return true;
        }
        dialog->close();
    }
    return false;
}

QFileDialog& FileDialogs::makeDialog(const QString& panel, const QString& title, QFileDialog::FileMode mode,
                                     const QStringList& subject)
{
    auto* dialog = new QFileDialog(window_, title, lastFolder_);
    name(*dialog, panel, subject);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(mode);
    // Nothing is made, renamed or deleted where something is only chosen.
    dialog->setOption(QFileDialog::ReadOnly);
    return *dialog;
}

void FileDialogs::show(QFileDialog& dialog, Chosen chosen)
{
    QObject::connect(&dialog, &QFileDialog::filesSelected, &dialog,
                     [this, &dialog, chosen = std::move(chosen)](const QStringList& files) {
                         lastFolder_ = dialog.directory().absolutePath();
                         chosen(files);
                     });
    dialog.show();
}
