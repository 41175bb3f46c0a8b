#include "platform/FontConfiguration.h"

#include <dlfcn.h>

std::future<void> FontConfiguration::readAhead()
{
    // Nothing of Qt's in here: the thread that uses it first is its main thread for good.
    return std::async(std::launch::async, [] {
        // Qt uses the same library, so it is not worth a dependency of the program's own. It stays open.
        auto* library = ::dlopen("libfontconfig.so.1", RTLD_LAZY);
        auto* read = library ? reinterpret_cast<int (*)()>(::dlsym(library, "FcInit")) : nullptr;
        if (read)
            read();
    });
}
