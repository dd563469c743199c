#include "displayServer.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace displayServer {

void awaitDrawn()
{
    if (QGuiApplication::platformName() != QStringLiteral("xcb")) // others can have half an X11
        return;
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection())
        return;
    // The answer to any question comes behind whatever was asked for before.
    xcb_connection_t *connection = x11->connection();
    const auto asked = xcb_get_input_focus(connection);
    const std::unique_ptr<xcb_get_input_focus_reply_t, decltype(&std::free)> reply(
        xcb_get_input_focus_reply(connection, asked, nullptr), &std::free);
}

} // namespace displayServer
