#include "library/Deed.h"

#include <QCoreApplication>
#include <QLocale>

namespace {

struct Texts {
    const char* all;
    const char* some;
};

Texts textsFor(Deed::Kind kind)
{
    switch (kind) {
    case Deed::Kind::TracksNumbered:
        return {QT_TRANSLATE_N_NOOP("Deed", "%Ln files numbered"),
                QT_TRANSLATE_N_NOOP("Deed", "%1 of %Ln files numbered")};
    case Deed::Kind::UnsupportedTagsRemoved:
        return {QT_TRANSLATE_N_NOOP("Deed", "Unsupported tags removed from %Ln files"),
                QT_TRANSLATE_N_NOOP("Deed", "Unsupported tags removed from %1 of %Ln files")};
    case Deed::Kind::AllTagsRemoved:
        return {QT_TRANSLATE_N_NOOP("Deed", "Tags removed from %Ln files"),
                QT_TRANSLATE_N_NOOP("Deed", "Tags removed from %1 of %Ln files")};
    case Deed::Kind::ArtSet:
        return {QT_TRANSLATE_N_NOOP("Deed", "Album art set in %Ln files"),
                QT_TRANSLATE_N_NOOP("Deed", "Album art set in %1 of %Ln files")};
    case Deed::Kind::ArtDeleted:
        break;
    }
    return {QT_TRANSLATE_N_NOOP("Deed", "Album art deleted in %Ln files"),
            QT_TRANSLATE_N_NOOP("Deed", "Album art deleted in %1 of %Ln files")};
}

} // namespace

QString Deed::text() const
{
    const bool isWhole = done == wanted;
    const Texts texts = textsFor(kind);
    const QString text =
        QCoreApplication::translate("Deed", isWhole ? texts.all : texts.some, nullptr, static_cast<int>(wanted));
    return isWhole ? text : text.arg(QLocale().toString(done));
}
