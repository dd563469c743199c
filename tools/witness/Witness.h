#pragma once

#include "Desk.h"

#include <map>
#include <random>

/// Watches places of the screen, tells what changes there and when, and does its errands.
class Witness
{
public:
    Witness(Desk &desk, std::vector<Shadow> places, std::vector<Errand> errands,
            std::uint64_t seed);

    /// Until the process is asked to end, or the screen is lost. What went wrong, if anything.
    QString run();

private:
    struct Change
    {
        Shadow *place;
        Area part;
        moment::Ns at;
    };

    QString lookAround();
    void takeIn();
    void judge(const Change &change);
    void sendFor(const std::string &place, double before, double after, moment::Ns at);
    void setTimer() const;
    void pressDue();

    Desk &m_desk;
    std::vector<Shadow> m_places;
    std::vector<Errand> m_errands;
    std::mt19937_64 m_dice;
    std::multimap<moment::Ns, Press> m_due; ///< what is to be pressed, by its moment
    int m_timer;
    int m_end;
};
