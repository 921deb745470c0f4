#pragma once

#include "cli/words/Failure.h"

#include <string>

namespace vexroc {

/// A shared library that is opened when it is first needed, by the name of its interface, such as "libpq.so.5": a run
/// that needs none of it does not pay for it. Never closed again.
class Library {
public:
    /// `package` is what to install when it is not there, `purpose` what it is needed for: both go into the error.
    /// Throws `failure` of them: an input error where data are read, an output error where files are written.
    Library(const char* soname, const char* package, const std::string& purpose,
            Failure (*failure)(const std::string&));

    /// The address of a function, for a pointer of its type: decltype(&PQclear) clear = library["PQclear"].
    struct Symbol {
        void* address;
        template <class Function>
        operator Function*() const noexcept // NOLINT(google-explicit-constructor): it initialises pointers
        {
            return reinterpret_cast<Function*>(address);
        }
    };
    [[nodiscard]] Symbol operator[](const char* name) const;

private:
    void* handle_;
    std::string missing_; ///< what to say of a function that is not there
    Failure (*failure_)(const std::string&);
};

} // namespace vexroc
