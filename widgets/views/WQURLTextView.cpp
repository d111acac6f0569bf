#include <WQGeneral/views/WQURLTextView.h>

#include <QAbstractTextDocumentLayout>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

namespace wq {

namespace {

struct LinkRun {
    QString href;   // empty when the run is not a link
    int start = 0;
    int end = 0;
};

bool isLink(const QTextCharFormat& format)
{
    return format.isAnchor() && !format.anchorHref().isEmpty();
}

// The link at position and the run of text around it that has the same
// link (or the same lack of one), within its paragraph.
LinkRun linkRunAt(const QTextDocument& document, int position)
{
    const QTextBlock block = document.findBlock(position);
    if (!block.isValid())
        return {QString(), position, position + 1};
    QList<QTextFragment> fragments;
    for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it)
        if (it.fragment().isValid())
            fragments.append(it.fragment());

    const auto hrefOf = [](const QTextFragment& f) { return isLink(f.charFormat()) ? f.charFormat().anchorHref() : QString(); };
    for (qsizetype i = 0; i < fragments.size(); ++i) {
        const QTextFragment& f = fragments[i];
        if (position < f.position() || position >= f.position() + f.length())
            continue;
        LinkRun run{hrefOf(f), f.position(), f.position() + f.length()};
        for (qsizetype before = i - 1; before >= 0 && hrefOf(fragments[before]) == run.href; --before)
            run.start = fragments[before].position();
        for (qsizetype after = i + 1; after < fragments.size() && hrefOf(fragments[after]) == run.href; ++after)
            run.end = fragments[after].position() + fragments[after].length();
        return run;
    }
    // The paragraph separator.
    return {QString(), position, position + 1};
}

// The rectangles (document coordinates) the characters [start, end) take,
// one per line they are laid out on.
QList<QRectF> rectsForRange(const QTextDocument& document, int start, int end)
{
    QList<QRectF> rects;
    QAbstractTextDocumentLayout* layout = document.documentLayout();
    for (QTextBlock block = document.findBlock(start); block.isValid() && block.position() < end; block = block.next()) {
        const QTextLayout* text = block.layout();
        if (!text)
            continue;
        const QPointF origin = layout->blockBoundingRect(block).topLeft();
        for (int i = 0; i < text->lineCount(); ++i) {
            const QTextLine line = text->lineAt(i);
            const int lineStart = block.position() + line.textStart();
            const int from = qMax(start, lineStart);
            const int to = qMin(end, lineStart + line.textLength());
            if (from >= to)
                continue;
            const qreal x1 = line.cursorToX(from - block.position());
            const qreal x2 = line.cursorToX(to - block.position());
            rects.append(QRectF(qMin(x1, x2), line.y(), qAbs(x2 - x1), line.height()).translated(origin));
        }
    }
    return rects;
}

// The characters of the lines that lie at least partly in visible.
std::pair<int, int> visibleCharacters(const QTextDocument& document, const QRectF& visible)
{
    int first = -1;
    int last = -1;
    QAbstractTextDocumentLayout* layout = document.documentLayout();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QRectF bounds = layout->blockBoundingRect(block);
        if (bounds.top() > visible.bottom())
            break;
        if (bounds.bottom() < visible.top() || !block.layout())
            continue;
        const QTextLayout* text = block.layout();
        for (int i = 0; i < text->lineCount(); ++i) {
            const QTextLine line = text->lineAt(i);
            const QRectF lineRect = line.rect().translated(bounds.topLeft());
            if (lineRect.bottom() < visible.top() || lineRect.top() > visible.bottom())
                continue;
            const int lineStart = block.position() + line.textStart();
            if (first < 0)
                first = lineStart;
            last = lineStart + line.textLength();
        }
    }
    return first < 0 ? std::pair{0, 0} : std::pair{first, last};
}

} // namespace

QPixmap WQURLClickHandImage()
{
    // Kept for the life of the process, past the application object.
    static const QPixmap* const image = new QPixmap(QStringLiteral(":/WQGeneral/URLClickHand.png"));
    return *image;
}

QCursor WQURLTextView::linkCursor()
{
    static const QCursor* const cursor = [] {
        const QPixmap image = WQURLClickHandImage();
        return image.isNull() ? new QCursor(Qt::BlankCursor) : new QCursor(image, 5, 0);
    }();
    return *cursor;
}

class WQURLTextViewPrivate {
public:
    QList<QRect> linkRects;
    bool linkRectsValid = false;
    QCursor ordinaryCursor;
};

WQURLTextView::WQURLTextView(QWidget* parent)
    : QTextBrowser(parent), _wq_d(std::make_unique<WQURLTextViewPrivate>())
{
    setOpenExternalLinks(true);
    viewport()->setMouseTracking(true);
    _wq_d->ordinaryCursor = viewport()->cursor();
    connect(document(), &QTextDocument::contentsChanged, this, &WQURLTextView::_wq_invalidateCursorRects);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &WQURLTextView::_wq_invalidateCursorRects);
    // A new document (setDocument, some setSource calls) brings a new layout.
    connect(this, &QTextEdit::textChanged, this, &WQURLTextView::_wq_invalidateCursorRects);
}

WQURLTextView::~WQURLTextView() = default;

void WQURLTextView::resetCursorRects()
{
    _wq_d->linkRects.clear();
    const QTextDocument& text = *document();
    const QPoint scroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const QRect visible = viewport()->rect();
    const QRectF visibleInDocument = QRectF(visible).translated(scroll);

    const auto [first, last] = visibleCharacters(text, visibleInDocument);
    for (int position = first; position < last;) {
        const LinkRun run = linkRunAt(text, position);
        if (!run.href.isEmpty())
            for (const QRectF& rect : rectsForRange(text, run.start, run.end)) {
                const QRect area = rect.translated(-scroll).toAlignedRect() & visible;
                if (!area.isEmpty())
                    _wq_d->linkRects.append(area);
            }
        position = qMax(run.end, position + 1);
    }
    _wq_d->linkRectsValid = true;
}

const QList<QRect>& WQURLTextView::linkCursorRects()
{
    if (!_wq_d->linkRectsValid)
        resetCursorRects();
    return _wq_d->linkRects;
}

void WQURLTextView::_wq_invalidateCursorRects()
{
    // The text edit's own destructor may still announce a change.
    if (_wq_d)
        _wq_d->linkRectsValid = false;
}

void WQURLTextView::_wq_updateCursor(const QPoint& viewportPos)
{
    const QList<QRect>& rects = linkCursorRects();
    const bool overLink = std::any_of(rects.begin(), rects.end(), [&](const QRect& r) { return r.contains(viewportPos); });
    const QCursor wanted = overLink ? linkCursor() : _wq_d->ordinaryCursor;
    if (viewport()->cursor() != wanted)
        viewport()->setCursor(wanted);
}

void WQURLTextView::mouseMoveEvent(QMouseEvent* event)
{
    // The browser sets its own pointing hand over anchors; the areas decide.
    QTextBrowser::mouseMoveEvent(event);
    _wq_updateCursor(event->position().toPoint());
}

void WQURLTextView::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    _wq_invalidateCursorRects();
}

void WQURLTextView::scrollContentsBy(int dx, int dy)
{
    QTextBrowser::scrollContentsBy(dx, dy);
    _wq_invalidateCursorRects();
    // The text moved under a pointer that did not.
    const QPoint pointer = viewport()->mapFromGlobal(QCursor::pos());
    if (viewport()->underMouse() && viewport()->rect().contains(pointer))
        _wq_updateCursor(pointer);
}

} // namespace wq
