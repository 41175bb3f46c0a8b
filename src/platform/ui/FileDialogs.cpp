#include "platform/ui/FileDialogs.h"

#include "platform/ui/SaveDialog.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMimeDatabase>

void FileDialogs::chooseAudioFiles(const QString& title, Chosen chosen)
{
    auto& dialog = makeDialog(title, QFileDialog::ExistingFiles);
    dialog.setNameFilter(QCoreApplication::translate("FileDialogs", "MP3 and M4A files")
                         + QStringLiteral(" (*.mp3 *.m4a)"));
    show(dialog, std::move(chosen));
}

void FileDialogs::chooseAudioFolder(const QString& title, Chosen chosen)
{
    show(makeDialog(title, QFileDialog::Directory), std::move(chosen));
}

void FileDialogs::chooseImageFiles(const QString& title, const QStringList& mimeTypes, Chosen chosen)
{
    auto& dialog = makeDialog(title, QFileDialog::ExistingFiles);
    QStringList patterns;
    for (const auto& type : mimeTypes) {
        for (const auto& pattern : QMimeDatabase().mimeTypeForName(type).globPatterns())
            patterns += {pattern, pattern.toUpper()};
    }
    dialog.setNameFilter(QCoreApplication::translate("FileDialogs", "Images")
                         + QStringLiteral(" (%1)").arg(patterns.join(QLatin1Char(' '))));
    show(dialog, std::move(chosen));
}

void FileDialogs::chooseSavePath(const SavePanelRequest& request)
{
    SavePanelRequest remembering = request;
    remembering.chosen = [this, chosen = request.chosen](const QString& path) {
        lastFolder_ = QFileInfo(path).absolutePath();
        chosen(path);
    };
    auto* dialog = new SaveDialog(window_, remembering, lastFolder_);
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

QFileDialog& FileDialogs::makeDialog(const QString& title, QFileDialog::FileMode mode)
{
    auto* dialog = new QFileDialog(window_, title, lastFolder_);
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
