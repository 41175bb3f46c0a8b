#include "sandbox/OpenPanelManager.h"

#include "platform/FilePanels.h"
#include "platform/FileSystem.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("OpenPanelManager", text);
}

QString applicationName()
{
    const QString shown = QGuiApplication::applicationDisplayName();
    const QString name = shown.isEmpty() ? QCoreApplication::applicationName() : shown;
    return name.isEmpty() ? QStringLiteral("Current App") : name;
}

std::string textOf(OpenPanelError::Case reason)
{
    const char* texts[]{QT_TRANSLATE_NOOP("OpenPanelManager", "Access was not granted"),
                        QT_TRANSLATE_NOOP("OpenPanelManager", "The request for access was stopped"),
                        QT_TRANSLATE_NOOP("OpenPanelManager", "The request for access was aborted")};
    return translated(texts[reason]).toStdString();
}

} // namespace

OpenPanelError::OpenPanelError(Case reason) : std::runtime_error(textOf(reason)), reason_(reason) {}

OpenPanelManager::OpenPanelManager(FilePanels& panels)
    : title(translated(QT_TRANSLATE_NOOP("OpenPanelManager", "Access permissions required"))),
      message(translated(QT_TRANSLATE_NOOP("OpenPanelManager",
                                           "Please allow '%@' to access this file or folder to continue."))
                  .replace(QLatin1String("%@"), applicationName())),
      prompt(translated(QT_TRANSLATE_NOOP("OpenPanelManager", "Allow"))), panels_(panels)
{
}

QString OpenPanelManager::requestAccess(const QString& path)
{
    const QString folder = FileSystem::absolutePath(QFileInfo(path).path());
    const AccessPanelAnswer answer = panels_.runAccessPanel({title, message, prompt, folder});
    switch (answer.response) {
    case AccessPanelAnswer::OK:
        return answer.path;
    case AccessPanelAnswer::Stop:
        throw OpenPanelError(OpenPanelError::stopped);
    case AccessPanelAnswer::Abort:
        throw OpenPanelError(OpenPanelError::aborted);
    case AccessPanelAnswer::Cancel:
        break;
    }
    throw OpenPanelError(OpenPanelError::canceled);
}
