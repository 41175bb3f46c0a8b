#include "tagengine/FailureReason.h"

#include <QCoreApplication>

namespace {

struct Reason {
    int error = 0;
    const char* text = nullptr;
    bool isSet() const { return error != 0 || text; }
};

thread_local Reason reason;

} // namespace

void FailureReason::clear()
{
    reason = {};
}

void FailureReason::note(int error)
{
    if (!reason.isSet())
        reason.error = error;
}

void FailureReason::note(const char* text)
{
    if (!reason.isSet())
        reason.text = text;
}

QString FailureReason::text()
{
    if (reason.text)
        return QCoreApplication::translate("FailureReason", reason.text);
    return reason.error != 0 ? qt_error_string(reason.error) : QString();
}
