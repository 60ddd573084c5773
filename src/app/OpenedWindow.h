#pragma once

#include <functional>

/// A window as far as the application knows it. What another program shows is never open here.
struct OpenedWindow {
    std::function<bool()> isOpen = [] {
        return false;
    };
    std::function<void()> bringForward = {}; ///< shows it before all others, with the keyboard's focus
    std::function<bool()> close = {};        ///< asks it to close; false when it stays open
};
