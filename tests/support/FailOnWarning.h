#pragma once

#include <QString>
#include <gtest/gtest.h>

/// A message handler of Qt that fails the running test when Qt warns.
inline void failOnWarning(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // What the offscreen platform says of windows, menus and tool tips, whoever shows them, is no news.
    const bool isKnown = message.startsWith(u"This plugin does not support");
    if (type != QtDebugMsg && type != QtInfoMsg && !isKnown)
        ADD_FAILURE() << "Qt said: " << message.toStdString();
}
