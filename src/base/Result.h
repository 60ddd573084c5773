#pragma once

#include "base/Error.h"

#include <concepts>
#include <type_traits>
#include <utility>
#include <variant>

/// A value or an `Error`, with the member names of std::expected, which this compiler does not have yet.
/// Reading the side that is absent is a broken invariant and throws std::bad_variant_access.
template <typename T> class [[nodiscard]] Result
{
public:
    using value_type = T;

    Result() requires std::default_initializable<T>
    = default;
    Result(const T &value)
        : m_content(std::in_place_index<0>, value)
    {
    }
    Result(T &&value)
        : m_content(std::in_place_index<0>, std::move(value))
    {
    }
    Result(Error error)
        : m_content(std::in_place_index<1>, std::move(error))
    {
    }

    bool has_value() const { return m_content.index() == 0; }
    explicit operator bool() const { return has_value(); }

    T &value() & { return std::get<0>(m_content); }
    const T &value() const & { return std::get<0>(m_content); }
    T &&value() && { return std::get<0>(std::move(m_content)); }
    T &operator*() & { return value(); }
    const T &operator*() const & { return value(); }
    T &&operator*() && { return std::move(*this).value(); }
    T *operator->() { return &value(); }
    const T *operator->() const { return &value(); }

    template <typename U> T value_or(U &&fallback) const &
    {
        return has_value() ? value() : static_cast<T>(std::forward<U>(fallback));
    }

    const Error &error() const & { return std::get<1>(m_content); }
    Error &&error() && { return std::get<1>(std::move(m_content)); }

private:
    std::variant<T, Error> m_content;
};

/// Success without a value, or an `Error`.
template <> class [[nodiscard]] Result<void>
{
public:
    using value_type = void;

    Result() = default;
    Result(Error error)
        : m_error(std::move(error))
        , m_failed(true)
    {
    }

    bool has_value() const { return !m_failed; }
    explicit operator bool() const { return has_value(); }
    const Error &error() const { return m_error; }

private:
    Error m_error;
    bool m_failed = false;
};
