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

    /// The address of a function as the pointer it is: library.bind(pointer, "PQclear").
    template <class Function>
    void bind(Function*& function, const char* name) const
    {
        function = reinterpret_cast<Function*>(symbol(name));
    }

private:
    [[nodiscard]] void* symbol(const char* name) const;

    void* handle_;
    std::string missing_; ///< what to say of a function that is not there
    Failure (*failure_)(const std::string&);
};

/// A function of a library, called as it is there: LibraryFunction<decltype(PQclear)> clear{library, "PQclear"}.
template <class Function>
class LibraryFunction {
public:
    LibraryFunction(const Library& library, const char* name) { library.bind(function_, name); }
    operator Function*() const noexcept { return function_; }

private:
    Function* function_ = nullptr;
};

} // namespace vexroc
