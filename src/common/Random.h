#pragma once

#include <QWidget>

#include <vector>

/// The shuffled tables that order the trials of a block: each draw holds 0 to N-1 exactly once.
/// Every draw seeds the generator anew from the seconds of the clock, so that two draws of one
/// table within a second are equal; the draws of `Test2`'s three tables of eight start 500 apart.
class Random : public QWidget
{
    Q_OBJECT

public:
    explicit Random(QWidget *parent);

    std::vector<int> generateRand3() const;
    std::vector<int> generateRand5() const;
    std::vector<int> generateRand6() const;
    std::vector<int> generateRand8() const;
    std::vector<int> generateRand8_a() const;
    std::vector<int> generateRand8_b() const;
    std::vector<int> generateRand8_c() const;
    std::vector<int> generateRand9() const;
    std::vector<int> generateRand10() const;
    std::vector<int> generateRand12() const;
    /// A sector, its two neighbours, and the nine others shuffled.
    std::vector<int> generateRand12_3() const;
};
