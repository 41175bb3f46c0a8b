#include "library/CommandValidation.h"

#include <QCoreApplication>

bool CommandValidation::validateMenuItem(int tag, const State& state)
{
    switch (tag) {
    case SaveImage:
        return state.anySelected && state.artShown;
    case DeleteImage:
        return state.anySelected && state.artThere;
    case Remove:
    case UpdateImage:
    case EditTags:
    case QuickLook:
    case Rename:
    case Reveal:
    case Strip:
        return state.anySelected;
    default:
        return true;
    }
}

QString CommandValidation::title(int tag, const State& state)
{
    const auto translated = [](const char* text) { return QCoreApplication::translate("CommandValidation", text); };
    if (tag == UpdateImage)
        return state.artThere ? translated(QT_TRANSLATE_NOOP("CommandValidation", "Replace Album Art"))
                              : translated(QT_TRANSLATE_NOOP("CommandValidation", "Add Album Art"));
    if (tag == QuickLook)
        return state.previewShown ? translated(QT_TRANSLATE_NOOP("CommandValidation", "Close Quick Look"))
                                  : translated(QT_TRANSLATE_NOOP("CommandValidation", "Quick Look"));
    return {};
}
