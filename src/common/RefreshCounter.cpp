#include "RefreshCounter.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdlib>
#include <span>

#include <xcb/present.h>
#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace {
struct Freed
{
    void operator()(void *reply) const { std::free(reply); }
};
template <typename T>
using Owned = std::unique_ptr<T, Freed>;

constexpr qint64 nanosecondsPerMicrosecond = 1000;

/// ns from refresh to refresh; 0 for a mode without a beat of its own, as virtual screens have, and
/// for one that shows half of the lines at a time or each line twice.
double periodOf(const xcb_randr_mode_info_t &mode)
{
    constexpr quint32 uneven = XCB_RANDR_MODE_FLAG_INTERLACE | XCB_RANDR_MODE_FLAG_DOUBLE_SCAN;
    if (mode.dot_clock == 0 || (mode.mode_flags & uneven) != 0)
        return 0;
    constexpr double nanosecondsPerSecond = 1e9;
    return nanosecondsPerSecond * mode.htotal * mode.vtotal / mode.dot_clock;
}

bool contains(const xcb_randr_get_crtc_info_reply_t &crtc, int x, int y)
{
    return x >= crtc.x && x < crtc.x + crtc.width && y >= crtc.y && y < crtc.y + crtc.height;
}
} // namespace

/// The requests, and what answers them.
class RefreshCounter::Connection
{
public:
    Connection()
        : m_x11(xcb_connect(nullptr, nullptr))
    {
    }

    ~Connection()
    {
        if (m_events)
            xcb_unregister_for_special_event(m_x11, m_events);
        xcb_disconnect(m_x11);
    }

    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    /// Whether the server has the two extensions.
    bool isUsable()
    {
        if (xcb_connection_has_error(m_x11))
            return false;
        for (xcb_extension_t *extension : {&xcb_present_id, &xcb_randr_id}) {
            const auto *data = xcb_get_extension_data(m_x11, extension);
            if (!data || !data->present)
                return false;
        }
        const auto present = xcb_present_query_version(m_x11, 1, 0);
        const auto randr = xcb_randr_query_version(m_x11, 1, 3);
        const Owned<xcb_present_query_version_reply_t> presentVersion(
            xcb_present_query_version_reply(m_x11, present, nullptr));
        const Owned<xcb_randr_query_version_reply_t> randrVersion(
            xcb_randr_query_version_reply(m_x11, randr, nullptr));
        return presentVersion && randrVersion;
    }

    /// The period of the screen on which the middle of the window is, ns; 0 if there is none.
    double watch(xcb_window_t window)
    {
        if (window != m_window) {
            if (m_events)
                xcb_unregister_for_special_event(m_x11, m_events);
            m_window = window;
            const quint32 id = xcb_generate_id(m_x11);
            m_events = xcb_register_for_special_xge(m_x11, &xcb_present_id, id, nullptr);
            xcb_present_select_input(m_x11, id, window, XCB_PRESENT_EVENT_MASK_COMPLETE_NOTIFY);
        }
        return modePeriod();
    }

    void ask(RefreshReports &reports)
    {
        // Of a moment that is over the server tells at once, and says which refresh was the last.
        xcb_present_notify_msc(m_x11, m_window, ++m_serial, 0, 0, 0);
        const auto asked = xcb_get_input_focus(m_x11);
        const Owned<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_x11, asked, nullptr));
        while (const Owned<xcb_generic_event_t> unwanted{xcb_poll_for_event(m_x11)}) {
        }
        while (
            const Owned<xcb_generic_event_t> event{xcb_poll_for_special_event(m_x11, m_events)}) {
            const auto *told =
                reinterpret_cast<const xcb_present_complete_notify_event_t *>(event.get());
            if (told->event_type == XCB_PRESENT_COMPLETE_NOTIFY &&
                told->kind == XCB_PRESENT_COMPLETE_KIND_NOTIFY_MSC)
                reports.note(told->msc, qint64(told->ust) * nanosecondsPerMicrosecond);
        }
    }

private:
    double modePeriod()
    {
        const auto sized = xcb_get_geometry(m_x11, m_window);
        const Owned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(m_x11, sized, nullptr));
        if (!size)
            return 0;
        const auto placed = xcb_translate_coordinates(
            m_x11, m_window, size->root, qint16(size->width / 2), qint16(size->height / 2));
        const Owned<xcb_translate_coordinates_reply_t> middle(
            xcb_translate_coordinates_reply(m_x11, placed, nullptr));
        const auto listed = xcb_randr_get_screen_resources_current(m_x11, size->root);
        const Owned<xcb_randr_get_screen_resources_current_reply_t> resources(
            xcb_randr_get_screen_resources_current_reply(m_x11, listed, nullptr));
        if (!middle || !resources)
            return 0;
        const std::span crtcs(xcb_randr_get_screen_resources_current_crtcs(resources.get()),
                              resources->num_crtcs);
        const std::span modes(xcb_randr_get_screen_resources_current_modes(resources.get()),
                              resources->num_modes);
        for (const xcb_randr_crtc_t crtc : crtcs) {
            const auto described =
                xcb_randr_get_crtc_info(m_x11, crtc, resources->config_timestamp);
            const Owned<xcb_randr_get_crtc_info_reply_t> info(
                xcb_randr_get_crtc_info_reply(m_x11, described, nullptr));
            if (!info || !contains(*info, middle->dst_x, middle->dst_y))
                continue;
            const auto mode = std::ranges::find(modes, info->mode, &xcb_randr_mode_info_t::id);
            return mode == modes.end() ? 0 : periodOf(*mode);
        }
        return 0;
    }

    xcb_connection_t *m_x11;
    xcb_special_event_t *m_events = nullptr;
    xcb_window_t m_window = XCB_NONE;
    quint32 m_serial = 0;
};

RefreshCounter::RefreshCounter() = default;

RefreshCounter::~RefreshCounter() = default;

void RefreshCounter::watch(WId window)
{
    m_reports.begin(0);
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        return;
    auto connection = m_connection ? std::move(m_connection) : std::make_unique<Connection>();
    if (!connection->isUsable())
        return;
    const double period = connection->watch(xcb_window_t(window));
    if (period <= 0)
        return;
    m_reports.begin(period);
    m_connection = std::move(connection);
    ask();
}

void RefreshCounter::ask()
{
    if (m_connection)
        m_connection->ask(m_reports);
}
