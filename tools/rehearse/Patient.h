#pragma once

#include <QObject>

#include <memory>

struct Options;
class Screen;

/// A simulated patient, who sees what is on the screen and answers.
class Patient : public QObject
{
    Q_OBJECT

public:
    /// The patient for the task that is to be rehearsed.
    static std::unique_ptr<Patient> forTask(const Options &options, const Screen &screen);

    /// The patient was told to answer in so many ms. If the screen asks for an answer now, this
    /// takes the place of their own; otherwise it is a press more.
    virtual void answerIn(int ms) = 0;

protected:
    using QObject::QObject;

    /// A press in so many ms, whatever the screen shows then.
    void pressIn(int ms);

private:
    /// A press that the screen doesn't ask for.
    virtual void press() = 0;
};
