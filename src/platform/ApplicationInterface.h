#pragma once

#include <QString>

// How programs reach the running application over the session bus: the desktop's common interface for
// applications, org.freedesktop.Application.

inline constexpr char kApplicationId[] = "org.quirevault.Quirevault";
inline constexpr char kApplicationObjectPath[] = "/org/quirevault/Quirevault";
inline constexpr char kApplicationInterface[] = "org.freedesktop.Application";

// The actions that are not commands of a menu; each takes one text.
inline constexpr char kOpenRequestAction[] = "open-request"; ///< a reader window; its request as JSON
inline constexpr char kOpenPaperAction[] = "open-paper";     ///< a reader window; the paper's id
inline constexpr char kSearchAction[] = "search";            ///< the library with this in its search field

// The keys of platform data: what lets a window come forward, on Wayland and on X11.
inline constexpr char kActivationTokenKey[] = "activation-token";
inline constexpr char kStartupIdKey[] = "desktop-startup-id";

/// The option with which the bus starts the application: it opens no window before it is asked for one.
inline constexpr char kServiceOption[] = "--dbus-service";

/// The name on the bus of the application that has the library in `dataFolder`: one for the user's default
/// library, others for libraries elsewhere, so that two libraries can be open side by side.
QString applicationBusName(const QString &dataFolder);
