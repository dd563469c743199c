#pragma once

#include <QString>
#include <QUrl>

#include <functional>

class QWidget;

/// The one way by which the program hands a file to the desktop's own viewer, or lets the assessor
/// pick one, so that a test can answer in the desktop's place.
namespace desktop {

/// Opens a local file in the viewer that the desktop has for it. False if there is no such file, or
/// no viewer; what a viewer then makes of the file is not known.
bool open(const QUrl &file);

/// What the assessor is asked when a file is to be picked.
struct Question
{
    QString caption;
    QString folder; ///< in which the dialog begins
    QString filter;
};

/// The path of the file that was picked; empty after Cancel.
QString pickFile(QWidget *parent, const Question &question);

/// While one lives, it answers both. The latest one made answers.
class Handling
{
public:
    using Open = std::function<bool(const QUrl &file)>;
    using Pick = std::function<QString(const Question &question)>;

    Handling(Open open, Pick pick);
    ~Handling();
    Handling(const Handling &) = delete;
    Handling &operator=(const Handling &) = delete;

private:
    Open m_formerOpen;
    Pick m_formerPick;
};

} // namespace desktop
