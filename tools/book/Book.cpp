#include "Book.h"

#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextTable>

#include <limits>
#include <utility>

namespace {

constexpr qreal margin = 76; // pixels of a screen, 20 mm; on all four sides of a page
constexpr qreal pixelsPerInch = 96;
constexpr int linesTogether = 2; // of a paragraph, at the foot of a page
constexpr int rowsTogether = 2;  // of a table: its head and a row

bool isHeading(const QTextBlock &block)
{
    return block.blockFormat().headingLevel() > 0;
}

bool isPicture(const QTextBlock &block)
{
    return block.text().startsWith(QChar::ObjectReplacementCharacter);
}

/// From the first page's top, as all places here. An empty block before a table has no lines.
qreal topOf(const QTextBlock &block)
{
    const qreal top = block.document()->documentLayout()->blockBoundingRect(block).top();
    return block.layout()->lineCount() > 0 ? top + block.layout()->lineAt(0).y() : top;
}

/// Where a line of a block ends, or its last one if it hasn't so many.
qreal footOf(const QTextBlock &block, int lines)
{
    const qreal top = block.document()->documentLayout()->blockBoundingRect(block).top();
    const int count = qMin(lines, block.layout()->lineCount());
    return count > 0 ? top + block.layout()->lineAt(count - 1).rect().bottom() : top;
}

/// Where the lines of a row begin and end.
std::pair<qreal, qreal> spanOf(const QTextTable &table, int row)
{
    qreal top = std::numeric_limits<qreal>::max();
    qreal foot = 0;
    for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        const QTextBlock last = cell.lastCursorPosition().block();
        top = qMin(top, topOf(cell.firstCursorPosition().block()));
        foot = qMax(foot, footOf(last, last.layout()->lineCount()));
    }
    return {top, foot};
}

bool beginsPage(const QTextBlock &block)
{
    return block.blockFormat().pageBreakPolicy().testFlag(QTextFormat::PageBreak_AlwaysBefore);
}

void breakBefore(const QTextBlock &block)
{
    QTextBlockFormat format;
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(block).mergeBlockFormat(format);
}

void copyRow(const QTextTable &from, int fromRow, QTextTable &to, int toRow)
{
    for (int column = 0; column < from.columns(); ++column) {
        const QTextTableCell cell = from.cellAt(fromRow, column);
        QTextCursor content = cell.firstCursorPosition();
        content.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
        QTextCursor place = to.cellAt(toRow, column).firstCursorPosition();
        place.setBlockFormat(content.blockFormat());
        place.insertFragment(content.selection());
    }
}

} // namespace

Book::Book(const QString &images)
    : m_images(images)
{
    setDefaultFont(QFont(QStringLiteral("Liberation Sans"), 10));
}

QString Book::missing() const
{
    return m_missing;
}

QVariant Book::loadResource(int type, const QUrl &name)
{
    if (type != ImageResource)
        return {};
    QImage image(m_images + u'/' + name.toString());
    if (image.isNull())
        m_missing = name.toString();
    return image;
}

void Book::write(QPdfWriter &pdf)
{
    repeatHeads();
    placeContents();
    layOut(pdf);
    keepTogether();
    fillContents();

    QPainter painter(&pdf);
    painter.setFont(defaultFont());
    const QSizeF page = pageSize();
    for (int number = 1; number <= pageCount(); ++number) {
        if (number > 1)
            pdf.newPage();
        const QRectF part(QPointF(0, (number - 1) * page.height()), page);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = part;
        context.palette.setColor(QPalette::Text, Qt::black);
        painter.save();
        painter.translate(0, -part.top());
        painter.setClipRect(part);
        documentLayout()->draw(&painter, context);
        painter.restore();
        const qreal foot = margin / pixelsPerInch * pdf.logicalDpiY();
        painter.drawText(QRectF(0, page.height() - foot, page.width(), foot), Qt::AlignCenter,
                         QString::number(number));
    }
}

void Book::layOut(QPdfWriter &pdf)
{
    documentLayout()->setPaintDevice(&pdf);
    setPageSize(QSizeF(pdf.width(), pdf.height()));
    QTextFrameFormat frame = rootFrame()->frameFormat();
    frame.setMargin(margin); // in dots by the layout itself
    rootFrame()->setFrameFormat(frame);
}

/// The whole of it: when only a part is laid out anew, some of what follows is lost.
void Book::layOutAnew()
{
    const QSizeF page = pageSize();
    setPageSize({});
    setPageSize(page);
    pageCount();
}

/// The first row of a table stands above its rows on the next page, too.
void Book::repeatHeads()
{
    for (auto it = rootFrame()->begin(); !it.atEnd(); ++it) {
        if (auto *table = qobject_cast<QTextTable *>(it.currentFrame())) {
            QTextTableFormat format = table->format();
            format.setHeaderRowCount(1);
            format.setBorderCollapse(true);
            table->setFormat(format);
        }
    }
}

QList<QTextBlock> Book::chapters() const
{
    QList<QTextBlock> found;
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 2)
            found.append(block);
    }
    return found;
}

/// The chapters' titles, with room for the numbers of their pages.
void Book::placeContents()
{
    QTextCursor cursor = find(QStringLiteral("v_contents"));
    if (cursor.isNull())
        return;
    const QList<QTextBlock> titles = chapters();
    cursor.removeSelectedText();
    QTextTableFormat format;
    format.setBorder(0);
    format.setCellPadding(1);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    format.setColumnWidthConstraints({QTextLength(QTextLength::PercentageLength, 90),
                                      QTextLength(QTextLength::PercentageLength, 10)});
    m_contents = cursor.insertTable(int(titles.size()), 2, format);
    QTextBlockFormat number;
    number.setAlignment(Qt::AlignRight);
    for (int row = 0; row < titles.size(); ++row) {
        m_contents->cellAt(row, 0).firstCursorPosition().insertText(titles.at(row).text());
        m_contents->cellAt(row, 1).firstCursorPosition().setBlockFormat(number);
    }
}

void Book::fillContents()
{
    if (!m_contents)
        return;
    const QList<QTextBlock> titles = chapters();
    QStringList pages; // all of them before the first is written, which changes the layout
    for (const QTextBlock &title : titles)
        pages.append(QString::number(pageAt(topOf(title))));
    for (int row = 0; row < pages.size(); ++row)
        m_contents->cellAt(row, 1).firstCursorPosition().insertText(pages.at(row));
    layOutAnew();
}

int Book::pageAt(qreal y) const
{
    return int(y / pageSize().height()) + 1;
}

/// Each break changes what follows it, and nothing before it.
void Book::keepTogether()
{
    while (breakAtFirstSplit())
        layOutAnew();
}

bool Book::breakAtFirstSplit()
{
    QTextBlock first; // of what stands together
    for (auto it = rootFrame()->begin(); !it.atEnd(); ++it) {
        qreal foot = 0;
        if (const auto *table = qobject_cast<QTextTable *>(it.currentFrame())) {
            foot = spanOf(*table, qMin(rowsTogether, table->rows()) - 1).second;
        } else {
            const bool isNext = isPicture(it.currentBlock()) && isPicture(first);
            if (!first.isValid() || isNext)
                first = it.currentBlock();
            foot = footOf(it.currentBlock(), linesTogether);
        }
        // What is larger than a page is split all the same.
        if (first.isValid() && pageAt(topOf(first)) != pageAt(foot) && !beginsPage(first)) {
            breakBefore(first);
            return true;
        }
        if (auto *table = qobject_cast<QTextTable *>(it.currentFrame())) {
            if (keepRows(*table))
                return true;
        }
        if (!isHeading(it.currentBlock()) && !isPicture(it.currentBlock()))
            first = QTextBlock();
    }
    return false;
}

/// Whether a row had to go to the next page, and the rows below it with it.
bool Book::keepRows(QTextTable &table)
{
    for (int row = rowsTogether; row < table.rows(); ++row) {
        const auto [top, foot] = spanOf(table, row);
        if (pageAt(top) != pageAt(foot)) {
            split(table, row);
            return true;
        }
    }
    return false;
}

/// The rows from this one on become a table of their own on the next page, below the same head.
void Book::split(QTextTable &table, int row)
{
    QTextCursor cursor(this);
    cursor.setPosition(table.lastPosition() + 1);
    QTextTableFormat format = table.format();
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextTable *rest = cursor.insertTable(table.rows() - row + 1, table.columns(), format);
    copyRow(table, 0, *rest, 0);
    for (int from = row; from < table.rows(); ++from)
        copyRow(table, from, *rest, from - row + 1);
    table.removeRows(row, table.rows() - row);
}
