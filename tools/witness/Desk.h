#pragma once

#include "Errand.h"
#include "Shadow.h"

#include <cstdlib>
#include <memory>
#include <span>
#include <vector>

#include <xcb/damage.h>
#include <xcb/xcb.h>

/// The screen, seen from outside of all programs: what was drawn on it, what stands there, and its
/// keys and buttons.
class Desk
{
public:
    /// Something was drawn somewhere; whether it looks different now is another question.
    struct Drawing
    {
        Area area;
        moment::Ns at = 0;
    };

    /// The screen that DISPLAY names, or nothing and a line of complaint.
    static std::unique_ptr<Desk> open(QString &error);

    xcb_connection_t *connection() const { return m_connection.get(); }
    const xcb_screen_t &screen() const { return *m_screen; }
    int descriptor() const { return xcb_get_file_descriptor(connection()); }
    bool isLost() const { return xcb_connection_has_error(connection()) != 0; }

    /// From now on drawings are told, each stamped as soon as its event has been read.
    void watch();
    std::vector<Drawing> drawings();
    /// What stands there now, row by row; empty where the area leaves the screen. Good until the
    /// next look.
    std::span<const Shadow::Pixel> look(const Area &area);

    /// Whether the keyboard has such a key.
    bool hasKey(const Press &press) const;
    /// Presses and lets go. The moment just before it was sent.
    moment::Ns press(const Press &press);

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t *connection) const { xcb_disconnect(connection); }
    };
    struct Free
    {
        void operator()(void *memory) const { std::free(memory); }
    };

    explicit Desk(xcb_connection_t *connection);
    bool hasExtensions() const;
    void readKeys();
    std::uint8_t keyCode(std::uint32_t symbol) const;

    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    const xcb_screen_t *m_screen = nullptr;
    std::uint8_t m_damageEvent = 0;
    std::vector<std::pair<std::uint32_t, std::uint8_t>> m_keys; ///< symbols and their codes
    std::unique_ptr<xcb_get_image_reply_t, Free> m_image;
};
