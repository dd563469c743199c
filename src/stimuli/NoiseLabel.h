#pragma once

#include <QLabel>
#include <QPixmap>

/// The mask: a label whose style sheet gives it a picture without a gap for background. What the
/// style draws is drawn once, and copied to the screen from then on: it is by far the largest
/// picture of a trial, and what takes long varies much.
class NoiseLabel : public QLabel
{
    Q_OBJECT

public:
    explicit NoiseLabel(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap drawn() const;

    QPixmap m_picture;
};
