#include "artwork/FilePromiseProvider.h"

void FilePromiseProvider::promise(const QString& mimeType, Make make)
{
    promises_[mimeType] = std::move(make);
}

QStringList FilePromiseProvider::formats() const
{
    QStringList types = QMimeData::formats();
    for (const auto& [type, make] : promises_)
        types.append(type);
    return types;
}

QVariant FilePromiseProvider::retrieveData(const QString& mimeType, QMetaType preferredType) const
{
    const auto promise = promises_.find(mimeType);
    if (promise == promises_.end())
        return QMimeData::retrieveData(mimeType, preferredType);
    const auto [made, isNew] = made_.try_emplace(mimeType);
    if (isNew)
        made->second = promise->second();
    return made->second;
}
