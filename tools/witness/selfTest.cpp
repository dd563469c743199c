#include "selfTest.h"

#include "Desk.h"
#include "spread.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include <poll.h>

namespace {

constexpr int patience = 1000; // ms
constexpr moment::Ns pause = 4 * moment::perMs;
constexpr Area area{16, 16, 120, 80};

/// A window above all others, whose colour can be changed, and which takes all keys.
class Canvas
{
public:
    explicit Canvas(Desk &desk)
        : m_desk(desk)
        , m_window(xcb_generate_id(desk.connection()))
        , m_pen(xcb_generate_id(desk.connection()))
    {
        const std::array<std::uint32_t, 2> values{desk.screen().black_pixel, 1};
        xcb_create_window(m_desk.connection(), XCB_COPY_FROM_PARENT, m_window, desk.screen().root,
                          area.x, area.y, area.width, area.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                          values.data());
        xcb_create_gc(m_desk.connection(), m_pen, m_window, 0, nullptr);
        xcb_map_window(m_desk.connection(), m_window);
    }

    bool takeKeys()
    {
        const auto wanted = xcb_grab_keyboard(m_desk.connection(), 1, m_window, XCB_CURRENT_TIME,
                                              XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_grab_keyboard_reply_t *answer =
            xcb_grab_keyboard_reply(m_desk.connection(), wanted, nullptr);
        const bool granted = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
        std::free(answer);
        return granted;
    }

    void fill(std::uint32_t colour)
    {
        xcb_change_gc(m_desk.connection(), m_pen, XCB_GC_FOREGROUND, &colour);
        const xcb_rectangle_t all{0, 0, area.width, area.height};
        xcb_poly_fill_rectangle(m_desk.connection(), m_window, m_pen, 1, &all);
        xcb_flush(m_desk.connection());
    }

    /// Whether a key press is here.
    bool receivesKey()
    {
        bool received = false;
        while (xcb_generic_event_t *event = xcb_poll_for_event(m_desk.connection())) {
            received |= (event->response_type & 0x7FU) == XCB_KEY_PRESS;
            std::free(event);
        }
        return received;
    }

private:
    Desk &m_desk;
    std::uint32_t m_window;
    std::uint32_t m_pen;
};

bool isReadable(const Desk &desk)
{
    pollfd awaited{desk.descriptor(), POLLIN, 0};
    return poll(&awaited, 1, patience) > 0;
}

/// The stamp of the first drawing that has changed the place, or 0 if there is none.
moment::Ns stampOfChange(Desk &desk, Shadow &place)
{
    while (isReadable(desk)) {
        const auto drawn = desk.drawings();
        for (const Desk::Drawing &drawing : drawn) {
            const Area part = place.area().cut(drawing.area);
            if (!part.isEmpty() && place.look(part, desk.look(part)) > 0)
                return drawing.at;
        }
    }
    return 0;
}

void tell(const char *what, const std::vector<moment::Ns> &values)
{
    constexpr double perMicrosecond = 1000.0;
    const Spread spread = Spread::of(values);
    std::printf("%s,%zu,%.1f,%.1f,%.1f,%.1f\n", what, spread.count,
                double(spread.median) / perMicrosecond, double(spread.p95) / perMicrosecond,
                double(spread.p99) / perMicrosecond, double(spread.worst) / perMicrosecond);
}

QString measureDrawings(Desk &watcher, Canvas &canvas, int rounds)
{
    Shadow place("canvas", area);
    place.look(area, watcher.look(area));
    canvas.fill(0x202020);
    if (stampOfChange(watcher, place) == 0)
        return QStringLiteral("a window was mapped, and no change was seen");
    std::vector<moment::Ns> late;
    for (int round = 0; round < rounds; ++round) {
        moment::waitUntil(moment::now() + pause);
        const moment::Ns drawn = moment::now();
        canvas.fill(round % 2 == 0 ? 0xFFFFFF : 0);
        const moment::Ns stamped = stampOfChange(watcher, place);
        if (stamped == 0)
            return QStringLiteral("drawing %1 was not seen").arg(round + 1);
        late.push_back(stamped - drawn);
    }
    tell("drawn to stamped", late);
    return {};
}

QString measureKeys(Desk &watcher, Desk &receiver, Canvas &canvas, int rounds)
{
    Press space;
    space.symbol = ' ';
    std::vector<moment::Ns> late;
    std::vector<moment::Ns> onTheWay;
    for (int round = 0; round < rounds; ++round) {
        const moment::Ns due = moment::now() + pause;
        moment::waitUntil(due);
        const moment::Ns sent = watcher.press(space);
        bool received = false;
        while (!received && isReadable(receiver))
            received = canvas.receivesKey();
        if (!received)
            return QStringLiteral("key press %1 did not arrive").arg(round + 1);
        late.push_back(sent - due);
        onTheWay.push_back(moment::now() - sent);
    }
    tell("due to sent", late);
    tell("sent to received", onTheWay);
    return {};
}

} // namespace

QString selfTest::run(int rounds)
{
    QString error;
    const auto watcher = Desk::open(error);
    const auto drawer = watcher ? Desk::open(error) : nullptr;
    if (!drawer)
        return error;
    watcher->watch();
    Canvas canvas(*drawer);
    std::printf("self-test,n,median_us,p95_us,p99_us,worst_us\n");
    error = measureDrawings(*watcher, canvas, rounds);
    if (!error.isEmpty())
        return error;
    if (!canvas.takeKeys())
        return QStringLiteral("another program holds the keyboard");
    return measureKeys(*watcher, *drawer, canvas, rounds);
}
