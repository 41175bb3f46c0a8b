#pragma once

#include <QString>

#include <stdexcept>

class FilePanels;

/// Why the open panel granted nothing.
class OpenPanelError : public std::runtime_error {
public:
    enum Case { canceled, stopped, aborted };

    explicit OpenPanelError(Case reason);
    Case reason() const { return reason_; }

private:
    Case reason_;
};

/// Asks the user for access to a file or folder.
class OpenPanelManagerProtocol {
public:
    virtual ~OpenPanelManagerProtocol() = default;

    /// @return what the user chose, which may be something else than @p path. Throws OpenPanelError.
    virtual QString requestAccess(const QString& path) = 0;
};

/// Asks by an open panel, which blocks until the user has answered. An empty text leaves the panel its own.
class OpenPanelManager : public OpenPanelManagerProtocol {
public:
    explicit OpenPanelManager(FilePanels& panels);

    QString title;
    QString message;
    /// The text of the button that grants.
    QString prompt;

    QString requestAccess(const QString& path) override;

private:
    FilePanels& panels_;
};
