#pragma once

#include <initializer_list>

/// A shared library that is loaded when it is first needed, and stays. For those that most commands and
/// windows do without: the dynamic linker takes up to a millisecond for each at every start. From any thread.
class LoadedLibrary
{
public:
    /// Loads the first of the `names` that this machine has.
    explicit LoadedLibrary(std::initializer_list<const char *> names);

    explicit operator bool() const { return m_handle; }

    /// False when the library has no such function.
    template <typename Function> bool find(const char *name, Function &function) const
    {
        function = reinterpret_cast<Function>(address(name));
        return function != nullptr;
    }

private:
    void *address(const char *name) const;

    void *m_handle = nullptr;
};

/// Ends the program with status 1, saying that it lacks the library `name`. For what belongs to every
/// installation.
[[noreturn]] void endWithoutLibrary(const char *name);
