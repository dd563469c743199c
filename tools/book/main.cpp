// kelmoran-book SOURCE.html IMAGES BOOK.pdf: makes the instruction book from its source, at build
// time and without a display. The images that it names lie in the folder IMAGES.

#include "Book.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPdfWriter>

#include <cstdio>

namespace {

constexpr int dotsPerInch = 300;

int fail(const QString &what)
{
    std::fprintf(stderr, "kelmoran-book: %s\n", qPrintable(what));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 4)
        return fail(QStringLiteral("usage: kelmoran-book SOURCE.html IMAGES BOOK.pdf"));

    QFile source(arguments[1]);
    if (!source.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1: %2").arg(arguments[1], source.errorString()));
    Book book(arguments[2]);
    book.setHtml(QString::fromUtf8(source.readAll()));

    QPdfWriter pdf(arguments[3]);
    pdf.setResolution(dotsPerInch);
    pdf.setTitle(book.metaInformation(QTextDocument::DocumentTitle));
    pdf.setCreator(QStringLiteral("Kelmoran"));
    pdf.setPageLayout(
        {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(), QPageLayout::Millimeter});
    book.write(pdf);
    if (!book.missing().isEmpty())
        return fail(QStringLiteral("no image %1").arg(book.missing()));
    if (QFileInfo(arguments[3]).size() == 0)
        return fail(QStringLiteral("%1 can't be written").arg(arguments[3]));
    return 0;
}
