#include "Test1.h"

#include "DrawArrowPeriph.h"
#include "DrawGrayRectangle.h"
#include "DrawRoundedRectangle.h"
#include "figures.h"
#include "parsed.h"

// The parameter panel: what it shows, and what its edits change.

namespace {
constexpr int white = 255;
constexpr float defaultShape = 15.0F;   // percent of half a figure's side
constexpr float defaultContrast = 0.8F; // of white

void showValue(QLineEdit *edit, int value)
{
    edit->setText(QStringLiteral("%1").arg(value));
}

void showValue(QLineEdit *edit, float value)
{
    edit->setText(QStringLiteral("%L1").arg(double(value), 8, 'f', 2));
}

/// Reads an entry and shows it as it was understood: what is no number is 0.
int takeInt(QLineEdit *edit)
{
    const int value = parsed::toInt(edit->text());
    showValue(edit, value);
    return value;
}

float takeFloat(QLineEdit *edit)
{
    const float value = parsed::toFloat(edit->text());
    showValue(edit, value);
    return value;
}
} // namespace

void Test1::writeDefaults()
{
    writeParameter(m_ui.le_timer01, m_time01, 500);
    writeParameter(m_ui.le_timer03, m_time03, 200);
    writeParameter(m_ui.le_timer04, m_time04, 500);
    writeParameter(m_ui.le_timer05, m_time05, 5000);
    writeParameter(m_ui.le_timer06, m_time06, 1000);
    setNumber(mostTrials());

    m_ui.le_horzPitch->setText(pitchText(m_calibration->isHorzPitch()));
    m_ui.le_vertPitch->setText(pitchText(m_calibration->isVertPitch()));
    showValue(m_ui.le_globSize, m_layout.figW());
    showValue(m_ui.le_orientation, m_layout.orientation());
    showValue(m_ui.le_size, m_layout.size());
    showValue(m_ui.le_separator, m_layout.separator());
    showValue(m_ui.le_triSize, m_layout.triH());
    showValue(m_ui.le_triRatio, m_layout.triRatio());
    showValue(m_ui.le_triOffset, m_layout.triOffset());
    showValue(m_ui.le_shape, defaultShape);
    showValue(m_ui.le_contrast, defaultContrast);
    setShape(defaultShape);
    setContrast(defaultContrast);
    setTriangleRatio();
    m_ui.le_timeTc->clear();
}

void Test1::showExposure(Subtask subtask)
{
    showValue(m_exposureEdits[subtask], m_state[subtask].exposure);
}

void Test1::showRanks()
{
    showValue(m_ui.le_no, m_trialNo + 1);
    for (std::size_t s = 0; s < subtasks; ++s)
        showValue(m_rankEdits[s], m_state[s].track.position() + 1);
}

void Test1::setShape(float radius)
{
    for (DrawRoundedRectangle *figure : {m_roundLeft, m_roundRight}) {
        figure->radius = radius;
        figure->update();
    }
}

void Test1::setContrast(float share)
{
    for (DrawGrayRectangle *figure : {m_grayLeft, m_grayRight}) {
        figure->gray = figures::truncated(double(share * white));
        figure->update();
    }
}

void Test1::setTriangleRatio()
{
    for (DrawArrowPeriph *arrow : m_arrows) {
        arrow->ratio = double(m_layout.triRatio());
        arrow->update();
    }
}

void Test1::takeExposure(Subtask subtask)
{
    m_state[subtask].exposure = takeInt(m_exposureEdits[subtask]);
    updateCycle();
}

void Test1::toLe_timer01()
{
    m_time01 = takeInt(m_ui.le_timer01);
}
void Test1::toLe_timer02_S1()
{
    takeExposure(Central);
}
void Test1::toLe_timer02_S2()
{
    takeExposure(Peripheral);
}
void Test1::toLe_timer02_S3()
{
    takeExposure(Dual);
}
void Test1::toLe_timer03()
{
    m_time03 = takeInt(m_ui.le_timer03);
}
void Test1::toLe_timer04()
{
    m_time04 = takeInt(m_ui.le_timer04);
}
void Test1::toLe_timer05()
{
    m_time05 = takeInt(m_ui.le_timer05);
    updateCycle();
}
void Test1::toLe_timer06()
{
    m_time06 = takeInt(m_ui.le_timer06);
}

void Test1::toLe_globSize()
{
    m_layout.setGlobSize(takeInt(m_ui.le_globSize));
    placeStimuli();
}

void Test1::toLe_shape()
{
    setShape(takeFloat(m_ui.le_shape));
}

void Test1::toLe_contrast()
{
    setContrast(takeFloat(m_ui.le_contrast));
}

void Test1::toLe_orientation()
{
    m_layout.setOrientation(takeFloat(m_ui.le_orientation));
    placeStimuli();
}

void Test1::toLe_size()
{
    m_layout.setSize(takeFloat(m_ui.le_size));
    placeStimuli();
}

void Test1::toLe_separator()
{
    m_layout.setSeparator(takeFloat(m_ui.le_separator));
    placeStimuli();
}

void Test1::toLe_triSize()
{
    m_layout.setTriSize(takeInt(m_ui.le_triSize));
    placeStimuli();
}

void Test1::toLe_triRatio()
{
    m_layout.setTriRatio(takeFloat(m_ui.le_triRatio));
    setTriangleRatio();
    placeStimuli();
}

void Test1::toLe_triOffset()
{
    m_layout.setTriOffset(takeInt(m_ui.le_triOffset));
    placeStimuli();
}
