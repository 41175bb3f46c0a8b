#include "platform/ui/SaveDialog.h"

#include "platform/FileSystem.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

SaveDialog::SaveDialog(QWidget* parent, const SavePanelRequest& request, const QString& folder)
    : QFileDialog(parent, request.title, folder), request_(request)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    request_.willAppear(*this);
    name_ = inChosenFormat(request_.name);
    selectFile(name_);
    connect(this, &QFileDialog::filterSelected, this, &SaveDialog::takeFormat);
    connect(this, &QFileDialog::fileSelected, this, &SaveDialog::finish);
    if (auto* field = this->field()) {
        connect(field, &QLineEdit::textChanged, this, &SaveDialog::followName);
        field->setText(name_);
    }
}

void SaveDialog::setFormats(const QStringList& titles, const QList<QStringList>& extensions)
{
    extensions_ = extensions;
    setNameFilters(titles);
}

void SaveDialog::selectFormat(int index)
{
    format_ = index;
    setDefaultSuffix(extensions_.value(index).value(0));
    selectNameFilter(nameFilters().value(index));
}

QLineEdit* SaveDialog::field() const
{
    return findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

void SaveDialog::followName(const QString& name)
{
    // Between two formats the dialog takes whatever stands behind the last dot for the extension of the first.
    if (selectedNameFilter() != nameFilters().value(format_))
        return;
    name_ = name;
    auto* field = this->field();
    if (const int format = formatOf(name); format >= 0 && format != format_) {
        const int cursor = field->cursorPosition();
        selectFormat(format);
        field->setText(name);
        field->setCursorPosition(cursor);
    }
    // The dialog judges by what it would make of the name, which may be nothing where that has quotes.
    if (auto* buttons = findChild<QDialogButtonBox*>())
        buttons->button(QDialogButtonBox::Save)->setEnabled(!name.isEmpty());
}

void SaveDialog::takeFormat()
{
    const int format = static_cast<int>(nameFilters().indexOf(selectedNameFilter()));
    if (format == format_ || format < 0)
        return;
    format_ = format;
    setDefaultSuffix(extensions_.at(format).value(0));
    request_.formatSelected(format);
    auto* field = this->field();
    isFormatChosen_ = !field;
    if (field && !name_.isEmpty())
        field->setText(inChosenFormat(name_));
}

int SaveDialog::formatOf(const QString& path) const
{
    const QString extension = QFileInfo(path).suffix().toLower();
    const auto found = std::find_if(extensions_.begin(), extensions_.end(),
                                    [&](const QStringList& extensions) { return extensions.contains(extension); });
    return found == extensions_.end() ? -1 : static_cast<int>(found - extensions_.begin());
}

QString SaveDialog::completed(const QString& path) const
{
    return formatOf(path) >= 0 ? path : path + QLatin1Char('.') + defaultSuffix();
}

QString SaveDialog::inChosenFormat(const QString& path) const
{
    if (formatOf(path) == format_)
        return path;
    QString bare = path;
    while (formatOf(bare) >= 0)
        bare.chop(QFileInfo(bare).suffix().size() + 1);
    return bare + QLatin1Char('.') + defaultSuffix();
}

bool SaveDialog::mayReplace(const QString& path)
{
    QMessageBox question(QMessageBox::Warning, windowTitle(),
                         tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName()),
                         QMessageBox::Yes | QMessageBox::No, this);
    question.setTextFormat(Qt::PlainText);
    question.setDefaultButton(QMessageBox::No);
    return question.exec() == QMessageBox::Yes;
}

void SaveDialog::accept()
{
    const auto* field = this->field();
    if (!field) {
        QFileDialog::accept();
        return;
    }
    // By itself, the dialog would take quotes in the name for marks around several names.
    QString name = field->text();
    if (name.isEmpty())
        return;
    if (name.startsWith(QLatin1String("~/")))
        name.replace(0, 1, QDir::homePath());
    const QString path = QDir::cleanPath(directory().absoluteFilePath(name));
    const QString complete = completed(path);
    for (const auto& folder : {path, complete}) {
        if (FileSystem::isFolder(folder)) {
            setDirectory(folder);
            return;
        }
    }
    if (FileSystem::exists(complete) && !mayReplace(complete))
        return;
    emit fileSelected(complete);
    done(Accepted);
}

void SaveDialog::finish(const QString& path)
{
    takeFormat();
    const QString complete = isFormatChosen_ ? inChosenFormat(path) : completed(path);
    if (complete == path || !FileSystem::exists(complete)) {
        request_.chosen(complete);
        return;
    }
    // The user was asked about the name as typed, not about the file that is there under the complete name.
    SavePanelRequest again = request_;
    again.name = QFileInfo(complete).fileName();
    auto* dialog = new SaveDialog(parentWidget(), again, QFileInfo(complete).absolutePath());
    dialog->setObjectName(objectName());
    dialog->setProperty("subject", request_.subject);
    dialog->show();
}
