// How a formatter delegate shows its cells: display texts kept per value,
// the style option, and painting with the text laid out once.

#include <WQGeneral/delegates/WQFormatterDelegate.h>

#include "WQFormatterDelegate_p.h"

#include <WQGeneral/dates/WQDate.h>

#include "WQCellValue.h"

#include <QApplication>
#include <QPainter>
#include <QScopedValueRollback>

#include <bit>
#include <exception>

namespace wq {
namespace {

// Past this many distinct values the texts are dropped and gathered again:
// a screen holds far fewer, a long scroll through a big model far more.
constexpr qsizetype kMaxTexts = 4096;

bool isNumber(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    default:
        return false;
    }
}

} // namespace

WQFormatterDelegate::Shown WQFormatterDelegate::_wq_render(const QVariant& cellValue) const
{
    Shown shown;
    const QVariant value = delegates::formatterValue(cellValue);
    if (!value.isValid())
        return shown;
    shown.number = isNumber(value.metaType());
    try {
        shown.text = _wq_d->formatter->stringForObjectValue(value).value_or(QString());
        // Negative as the user reads it: with a sign the amount without one
        // does not show (a tiny negative shows as zero, unsigned).
        if (shown.number && value.toDouble() < 0)
            shown.negative = shown.text != _wq_d->formatter->stringForObjectValue(-value.toDouble()).value_or(QString());
    } catch (const std::exception&) {
        shown.text.clear();
    }
    return shown;
}

const WQFormatterDelegate::Shown& WQFormatterDelegate::_wq_shown(const QVariant& value) const
{
    ValueKey key{value.typeId()};
    switch (key.type) {
    case QMetaType::Double:
    case QMetaType::Float:
        key.bits = std::bit_cast<qint64>(value.toDouble());
        break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        key.bits = value.toLongLong();
        break;
    case QMetaType::ULongLong:
        key.bits = qint64(value.toULongLong());
        break;
    case QMetaType::QDate:
        key.bits = value.toDate().toJulianDay();
        break;
    default:
        if (value.metaType() == QMetaType::fromType<WQDate>()) {
            const WQDate date = value.value<WQDate>();
            key.bits = date.yearOfCommonEra();
            key.more = date.monthOfYear() << 8 | date.dayOfMonth();
        } else {
            _wq_d->uncached = _wq_render(value);
            return _wq_d->uncached;
        }
    }
    if (const auto known = _wq_d->texts.constFind(key); known != _wq_d->texts.cend())
        return *known;
    if (_wq_d->texts.size() >= kMaxTexts)
        _wq_d->texts.clear();
    return *_wq_d->texts.insert(key, _wq_render(value));
}

QString WQFormatterDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    if (!_wq_d->formatter)
        return QStyledItemDelegate::displayText(value, locale);
    if (_wq_d->styling)
        return QString();
    return _wq_shown(value).text;
}

void WQFormatterDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    if (!_wq_d->formatter)
        return QStyledItemDelegate::initStyleOption(option, index);
    _wq_styleCell(option, index);
}

const WQFormatterDelegate::Shown& WQFormatterDelegate::_wq_styleCell(QStyleOptionViewItem* option,
                                                                    const QModelIndex& index) const
{
    // The base reads the model's alignment, if any, over this empty one; the
    // text it would make from the display role is not wanted.
    option->displayAlignment = Qt::Alignment();
    {
        const QScopedValueRollback styling(_wq_d->styling, true);
        QStyledItemDelegate::initStyleOption(option, index);
    }
    const Shown& shown = _wq_shown(_wq_d->valueRole == Qt::DisplayRole ? index.data() : index.data(_wq_d->valueRole));
    option->text = shown.text;
    if (shown.text.isEmpty())
        option->features &= ~QStyleOptionViewItem::HasDisplay;
    else
        option->features |= QStyleOptionViewItem::HasDisplay;
    if (!option->displayAlignment) {
        Qt::Alignment alignment = _wq_d->alignment ? _wq_d->alignment : shown.number ? Qt::AlignRight : Qt::AlignLeft;
        if (!(alignment & Qt::AlignVertical_Mask))
            alignment |= Qt::AlignVCenter;
        option->displayAlignment = alignment;
    }
    if (shown.negative && _wq_d->negativeBrush.style() != Qt::NoBrush)
        option->palette.setBrush(QPalette::Text, _wq_d->negativeBrush);
    return shown;
}

void WQFormatterDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!_wq_d->formatter)
        return QStyledItemDelegate::paint(painter, option, index);
    QStyleOptionViewItem cell = option;
    const Shown& shown = _wq_styleCell(&cell, index);
    const QWidget* widget = cell.widget;
    QStyle* style = widget ? widget->style() : QApplication::style();
    // A text that fits on one line beside nothing else, in a cell selected as
    // a whole (as in tables): the style draws the cell without it, and the
    // text goes on as laid out once for all repaints. Anything more (an icon,
    // a check box, a text to wrap or elide, a selection that hugs the text, a
    // style sheet that may colour the text) is the style's.
    const bool plain = !cell.text.isEmpty() && cell.showDecorationSelected
        && !(cell.features & (QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasCheckIndicator))
        && !(cell.state & QStyle::State_Editing) && !style->inherits("QStyleSheetStyle");
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
    const QRect room = cell.rect.adjusted(margin, 0, -margin, 0);
    if (!plain || !shown.fitsOneLine(cell.font, room.width()))
        return style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);

    cell.text.clear();
    cell.features &= ~QStyleOptionViewItem::HasDisplay;
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, widget);

    // The text's colour as the style chooses it.
    QPalette::ColorGroup group = QPalette::Normal;
    if (!(cell.state & QStyle::State_Enabled))
        group = QPalette::Disabled;
    else if (!(cell.state & QStyle::State_Active))
        group = QPalette::Inactive;
    const QPalette::ColorRole role = cell.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text;
    painter->save();
    painter->setPen(cell.palette.color(group, role));
    painter->setFont(cell.font);
    // Placed as the style places a text layout: vertically by its rounded
    // size, along the line to the unit fraction.
    const QSizeF size = shown.laidOut.size();
    const Qt::Alignment alignment = QStyle::visualAlignment(cell.direction, cell.displayAlignment);
    const int top = QStyle::alignedRect(cell.direction, alignment & Qt::AlignVertical_Mask, size.toSize(), room).top();
    qreal left = room.left();
    if (alignment & Qt::AlignRight)
        left += room.width() - size.width();
    else if (alignment & Qt::AlignHCenter)
        left += (room.width() - size.width()) / 2;
    painter->drawStaticText(QPointF(left, top), shown.laidOut);
    painter->restore();
}

bool WQFormatterDelegate::Shown::fitsOneLine(const QFont& font, int width) const
{
    if (text.contains(u'\n') || text.contains(QChar::LineSeparator))
        return false;
    if (laidOut.text().isEmpty() || laidOutFont != font) {
        laidOut.setText(text);
        laidOut.setTextFormat(Qt::PlainText);
        laidOut.prepare(QTransform(), font);
        laidOutFont = font;
    }
    return laidOut.size().width() <= width;
}

} // namespace wq
