#pragma once

#include <mupdf/fitz.h>
#include <optional>
#include <string>
#include <type_traits>

/// Why a call into MuPDF failed.
struct CallFailure {
    bool isOutOfMemory = false;
    std::string message; ///< MuPDF's words, valid UTF-8 of at most `kMaxReasonBytes`
};

CallFailure caughtFailure(fz_context *context);

/// Runs `call` and turns MuPDF's error, which is a longjmp, into a value; nothing when the call went well.
///
/// The jump skips destructors, and leaving the block early corrupts MuPDF's stack of errors. So `call` hands
/// its results out through references to plain variables, holds nothing that has a destructor while it calls
/// MuPDF, and this is the one place that writes `fz_try`. Never inlined: the compiler then keeps the
/// variables that `call` refers to in memory, where they survive the jump.
template <typename Call>
[[gnu::noinline]] std::optional<CallFailure> guarded(fz_context *context, const Call &call)
{
    static_assert(std::is_trivially_destructible_v<Call>);
    static_assert(std::is_void_v<decltype(call())>);
    bool hasFailed = false;
    fz_var(hasFailed);
    fz_try(context)
    {
        call();
    }
    fz_catch(context)
    {
        hasFailed = true;
    }
    return hasFailed ? std::optional(caughtFailure(context)) : std::nullopt;
}
