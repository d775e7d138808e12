#pragma once

#include <new>
#include <utility>

/// An object of the whole process, for a static inside a function: made on first use and never destroyed, so that the
/// host's own global objects can still use the library while the process ends.
template <class Object> class EProcessWide {
public:
    template <class... Argument>
    explicit EProcessWide(Argument&&... arguments)
        : m_object(*new (m_storage) Object(std::forward<Argument>(arguments)...))
    {
    }
    EProcessWide(EProcessWide const&) = delete;
    EProcessWide& operator=(EProcessWide const&) = delete;

    Object& Get() const { return m_object; }

private:
    alignas(Object) unsigned char m_storage[sizeof(Object)];
    Object& m_object; // in the storage
};
