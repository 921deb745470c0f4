#include "cli/system/Library.h"

#include <dlfcn.h>

namespace vexroc {

Library::Library(const char* soname, const char* package, const std::string& purpose,
                 Failure (*failure)(const std::string&))
    : handle_(dlopen(soname, RTLD_LAZY | RTLD_LOCAL)), failure_(failure)
{
    const std::string advice = purpose + " needs the library " + soname + "; install it: apt install " + package;
    if (handle_ == nullptr)
        throw failure(advice);
    missing_ = purpose + " needs another version of the library " + soname + " than the one installed: it has no ";
}

Library::Symbol Library::operator[](const char* name) const
{
    void* const found = dlsym(handle_, name);
    if (found == nullptr)
        throw failure_(missing_ + name);
    return {found};
}

} // namespace vexroc
