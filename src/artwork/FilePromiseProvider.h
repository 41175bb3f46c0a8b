#pragma once

#include <QMimeData>
#include <QVariant>

#include <functional>
#include <map>

/// What a drag or the clipboard carries, each form of it made when the receiver first asks for it, and once.
class FilePromiseProvider : public QMimeData {
    Q_OBJECT

public:
    using Make = std::function<QVariant()>;

    void promise(const QString& mimeType, Make make);

    QStringList formats() const override;

protected:
    QVariant retrieveData(const QString& mimeType, QMetaType preferredType) const override;

private:
    std::map<QString, Make> promises_;
    mutable std::map<QString, QVariant> made_;
};
