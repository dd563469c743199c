#include "Desk.h"

#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

namespace {

constexpr int bitsPerPixel = 32;

template <typename T>
using Owned = std::unique_ptr<T, decltype(&std::free)>;

template <typename T>
Owned<T> owned(T *memory)
{
    return {memory, &std::free};
}

bool isPresent(xcb_connection_t *connection, xcb_extension_t *extension)
{
    const xcb_query_extension_reply_t *answer = xcb_get_extension_data(connection, extension);
    return answer && answer->present;
}

/// Whether a pixel of the screen takes four bytes, the colours a byte each.
bool hasFourBytes(const xcb_setup_t *setup, std::uint8_t depth)
{
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0;
         xcb_format_next(&format)) {
        if (format.data->depth == depth)
            return format.data->bits_per_pixel == bitsPerPixel &&
                   setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    }
    return false;
}

} // namespace

std::unique_ptr<Desk> Desk::open(QString &error)
{
    std::unique_ptr<Desk> desk(new Desk(xcb_connect(nullptr, nullptr)));
    if (desk->isLost())
        error = QStringLiteral("there is no X11 screen");
    else if (!desk->hasExtensions())
        error = QStringLiteral("the screen lacks the extension DAMAGE or XTEST");
    else if (!hasFourBytes(xcb_get_setup(desk->connection()), desk->screen().root_depth))
        error = QStringLiteral("the screen has no pixels of four bytes");
    if (!error.isEmpty())
        return nullptr;
    desk->readKeys();
    return desk;
}

Desk::Desk(xcb_connection_t *connection)
    : m_connection(connection)
{
    if (!isLost())
        m_screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

bool Desk::hasExtensions() const
{
    return isPresent(connection(), &xcb_damage_id) && isPresent(connection(), &xcb_test_id);
}

void Desk::readKeys()
{
    xcb_key_symbols_t *table = xcb_key_symbols_alloc(connection());
    const xcb_setup_t *setup = xcb_get_setup(connection());
    for (int code = setup->min_keycode; code <= setup->max_keycode; ++code)
        m_keys.emplace_back(xcb_key_symbols_get_keysym(table, xcb_keycode_t(code), 0),
                            std::uint8_t(code));
    xcb_key_symbols_free(table);
}

void Desk::watch()
{
    m_damageEvent = xcb_get_extension_data(connection(), &xcb_damage_id)->first_event;
    const auto version =
        xcb_damage_query_version(connection(), XCB_DAMAGE_MAJOR_VERSION, XCB_DAMAGE_MINOR_VERSION);
    owned(xcb_damage_query_version_reply(connection(), version, nullptr));
    // Of the root, which holds what all windows draw; every drawing by itself, at once.
    xcb_damage_create(connection(), xcb_generate_id(connection()), m_screen->root,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(connection());
}

std::vector<Desk::Drawing> Desk::drawings()
{
    std::vector<Drawing> found;
    while (xcb_generic_event_t *raw = xcb_poll_for_event(connection())) {
        const moment::Ns at = moment::now();
        const auto event = owned(raw);
        if ((event->response_type & 0x7FU) != m_damageEvent + XCB_DAMAGE_NOTIFY)
            continue;
        const auto &notice = reinterpret_cast<const xcb_damage_notify_event_t &>(*event);
        const xcb_rectangle_t &area = notice.area;
        found.push_back({{area.x, area.y, area.width, area.height}, at});
    }
    return found;
}

std::span<const Shadow::Pixel> Desk::look(const Area &area)
{
    const auto wanted = xcb_get_image(connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root,
                                      std::int16_t(area.x), std::int16_t(area.y),
                                      std::uint16_t(area.width), std::uint16_t(area.height), ~0U);
    m_image.reset(xcb_get_image_reply(connection(), wanted, nullptr));
    if (!m_image)
        return {};
    return {reinterpret_cast<const Shadow::Pixel *>(xcb_get_image_data(m_image.get())),
            std::size_t(area.width) * std::size_t(area.height)};
}

std::uint8_t Desk::keyCode(std::uint32_t symbol) const
{
    for (const auto &[known, code] : m_keys) {
        if (known == symbol)
            return code;
    }
    return 0;
}

bool Desk::hasKey(const Press &press) const
{
    return press.kind == Press::Kind::Button || keyCode(press.symbol) != 0;
}

moment::Ns Desk::press(const Press &press)
{
    const bool isKey = press.kind == Press::Kind::Key;
    const std::uint8_t detail = isKey ? keyCode(press.symbol) : std::uint8_t(press.symbol);
    const std::uint8_t down = isKey ? XCB_KEY_PRESS : XCB_BUTTON_PRESS;
    const std::uint8_t up = isKey ? XCB_KEY_RELEASE : XCB_BUTTON_RELEASE;
    const moment::Ns sent = moment::now();
    for (const std::uint8_t way : {down, up})
        xcb_test_fake_input(connection(), way, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(connection());
    return sent;
}
