#pragma once

#include <initializer_list>

class QWidget;

/// Gives all widgets of the group the font of the first one, its point size raised by this many
/// points. A size told in pixels is raised from the points that the font has on the screen. An
/// empty group is left alone.
void raiseFonts(std::initializer_list<QWidget *> group, int points);
