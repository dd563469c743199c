#include "desktop.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>

#include <utility>

namespace desktop {
namespace {

Handling::Open &opener()
{
    static Handling::Open current;
    return current;
}

Handling::Pick &picker()
{
    static Handling::Pick current;
    return current;
}

} // namespace

bool open(const QUrl &file)
{
    if (const auto answer = opener())
        return answer(file);
    // The desktop takes a file that isn't there without a word.
    return QFileInfo(file.toLocalFile()).isFile() && QDesktopServices::openUrl(file);
}

QString pickFile(QWidget *parent, const Question &question)
{
    if (const auto answer = picker())
        return answer(question);
    return QFileDialog::getOpenFileName(parent, question.caption, question.folder, question.filter);
}

Handling::Handling(Open open, Pick pick)
    : m_formerOpen(std::exchange(opener(), std::move(open)))
    , m_formerPick(std::exchange(picker(), std::move(pick)))
{
}

Handling::~Handling()
{
    opener() = std::move(m_formerOpen);
    picker() = std::move(m_formerPick);
}

} // namespace desktop
