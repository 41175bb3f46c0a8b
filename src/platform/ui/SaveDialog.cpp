#include "platform/ui/SaveDialog.h"

SaveDialog::SaveDialog(QWidget* parent, const SavePanelRequest& request, const QString& folder)
    : QFileDialog(parent, request.title, folder), request_(request)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    request_.willAppear(*this);
    selectFile(completed(request_.name));
    connect(this, &QFileDialog::filterSelected, this, &SaveDialog::takeFormat);
    connect(this, &QFileDialog::fileSelected, this, &SaveDialog::finish);
}

void SaveDialog::setFormatTitles(const QStringList& titles)
{
    setNameFilters(titles);
}

void SaveDialog::selectFormat(int index)
{
    format_ = index;
    selectNameFilter(nameFilters().value(index));
}

void SaveDialog::setAllowedExtensions(const QStringList& extensions)
{
    extensions_ = extensions;
    knownExtensions_ += extensions;
    setDefaultSuffix(extensions.value(0));
}

QString SaveDialog::completed(const QString& path) const
{
    const QString extension = QFileInfo(path).suffix();
    if (extensions_.isEmpty() || extensions_.contains(extension))
        return path;
    const QString bare = knownExtensions_.contains(extension) ? path.chopped(extension.size() + 1) : path;
    return bare + QLatin1Char('.') + extensions_.first();
}

void SaveDialog::takeFormat()
{
    const int format = static_cast<int>(nameFilters().indexOf(selectedNameFilter()));
    if (format == format_)
        return;
    format_ = format;
    request_.formatSelected(*this, format);
}

void SaveDialog::finish(const QString& path)
{
    takeFormat();
    const QString complete = completed(path);
    if (complete == path || !QFileInfo::exists(complete)) {
        request_.chosen(complete);
        return;
    }
    // The user was asked about the name as typed, not about the file that is there under the complete name.
    SavePanelRequest again = request_;
    again.name = QFileInfo(complete).fileName();
    auto* dialog = new SaveDialog(parentWidget(), again, QFileInfo(complete).absolutePath());
    dialog->show();
}
