#include "Chronicle.h"

#include <QByteArray>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KELMORAN_UNDER_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define KELMORAN_UNDER_SANITIZER
#endif

#ifdef KELMORAN_UNDER_SANITIZER
#include <sanitizer/common_interface_defs.h>
#endif

namespace chronicle {
namespace {

constexpr std::size_t lines = 120;
constexpr std::size_t width = 240;
using Line = std::array<char, width>;

Line s_title{};
std::array<Line, lines> s_lines{};
std::size_t s_next = 0;

void write(Line &line, const QString &text)
{
    const QByteArray bytes = text.toUtf8().left(qsizetype(width) - 2) + '\n';
    line.fill('\0');
    std::memcpy(line.data(), bytes.constData(), std::size_t(bytes.size()));
}

void put(const Line &line)
{
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, line.data(), ::strnlen(line.data(), width));
}

#ifndef KELMORAN_UNDER_SANITIZER
void printAndDie(int signal)
{
    print();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}
#endif

} // namespace

void begin(const QString &title)
{
    write(s_title, title);
#ifdef KELMORAN_UNDER_SANITIZER
    __sanitizer_set_death_callback(print);
#else
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        std::signal(signal, printAndDie);
#endif
}

void note(const QString &event)
{
    write(s_lines.at(s_next % lines), event);
    ++s_next;
}

void print()
{
    put(s_title);
    for (std::size_t i = s_next < lines ? 0 : s_next - lines; i < s_next; ++i)
        put(s_lines.at(i % lines));
}

} // namespace chronicle
