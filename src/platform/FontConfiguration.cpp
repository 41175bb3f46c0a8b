#include "platform/FontConfiguration.h"

#include <QLibrary>

std::future<void> FontConfiguration::readAhead()
{
    // Qt uses the same library, so it is not worth a dependency of the program's own.
    return std::async(std::launch::async, [] {
        const auto read = reinterpret_cast<int (*)()>(QLibrary::resolve(QStringLiteral("fontconfig"), 1, "FcInit"));
        if (read)
            read();
    });
}
