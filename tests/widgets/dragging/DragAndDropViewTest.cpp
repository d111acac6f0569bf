// The drag-and-drop view: when a press becomes a drag, what the drag
// carries, and the label it shows.

#include <WQGeneral/dragging/WQDragAndDropView.h>
#include <WQGeneral/dragging/WQDragImage.h>
#include <WQGeneral/dragging/WQDragPayload.h>

#include "FieldTesting.h"

#include <gtest/gtest.h>

#include <QDataStream>
#include <QFontMetricsF>
#include <QImage>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalSpy>

using namespace wq;

namespace {

struct Labels : WQDragAndDropViewDelegate {
    std::optional<QTextDocumentFragment> attributed;
    std::optional<QString> plain;
    std::optional<QTextDocumentFragment> attributedDragStringForWQDragAndDropView(const WQDragAndDropView&) override
    {
        return attributed;
    }
    std::optional<QString> dragStringForWQDragAndDropView(const WQDragAndDropView&) override { return plain; }
};

bool dark(const QColor& c)
{
    return c.alpha() > 100 && c.lightness() < 90;
}

bool light(const QColor& c)
{
    return c.alpha() > 100 && c.lightness() > 215;
}

// Rows, top to bottom, holding at least one pixel of the kind.
QList<int> rowsWith(const QImage& image, bool (*kind)(const QColor&))
{
    QList<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (kind(image.pixelColor(x, y))) {
                rows.append(y);
                break;
            }
    return rows;
}

// Records what reaches the ordinary press handling and the drag attempts.
class RecordingView : public WQDragAndDropView {
public:
    using WQDragAndDropView::WQDragAndDropView;

    struct Ordinary {
        QEvent::Type type;
        QPointF position;
    };
    QList<Ordinary> ordinary;
    QList<QSizeF> attempts;
    bool realDrag = false;       // run the view's own attempt

protected:
    void ordinaryMousePress(QMouseEvent* event) override
    {
        ordinary.append({event->type(), event->position()});
        WQDragAndDropView::ordinaryMousePress(event);
    }

    bool _tv_attemptToStartDragWithEvent(QMouseEvent* event, const QSizeF& initialOffset) override
    {
        attempts.append(initialOffset);
        return !realDrag || WQDragAndDropView::_tv_attemptToStartDragWithEvent(event, initialOffset);
    }
};

// The view at (30, 20) in its window, so view and window coordinates differ.
struct Scene {
    QWidget window;
    RecordingView* view = new RecordingView(&window);

    Scene()
    {
        view->setGeometry(30, 20, 200, 40);
        view->setCanDrag(true);
        window.resize(300, 100);
        test::showActive(window);
    }

    // Mouse events with fractional positions, as a high-resolution pointer gives them.
    void send(QEvent::Type type, QPointF inView)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        const QPointF inWindow = inView + QPointF(view->pos());
        QMouseEvent event(type, inView, inWindow, view->mapToGlobal(inView), button, held, Qt::NoModifier);
        QApplication::sendEvent(view, &event);
    }
};

} // namespace

TEST(DragAndDropView, ThreeWindowPointsOnEitherAxisStartTheDrag)
{
    const struct {
        QPointF move;
        bool starts;
    } cases[] = {
        {{3, 0}, true},     {{0, 3}, true},     {{-3, 0}, true},     {{0, -3}, true},
        {{2.9, 0}, false},  {{0, 2.9}, false},  {{-2.9, 2.9}, false}, {{2, 2}, false},
        {{2.9, -3}, true},  {{40, 1}, true},
    };
    for (const auto& c : cases) {
        Scene scene;
        const QPointF press(12, 10);
        scene.send(QEvent::MouseButtonPress, press);
        scene.send(QEvent::MouseMove, press + c.move);
        ASSERT_EQ(scene.view->attempts.size(), c.starts ? 1 : 0) << c.move.x() << ", " << c.move.y();
        if (c.starts) {
            // The distances moved less the press location in the window.
            const QPointF s = press + QPointF(30, 20);
            EXPECT_EQ(scene.view->attempts.first(),
                      QSizeF(std::abs(c.move.x()) - s.x(), std::abs(c.move.y()) - s.y()));
        }
        EXPECT_TRUE(scene.view->ordinary.isEmpty());
    }
}

TEST(DragAndDropView, WithDraggingOffAPressIsAnOrdinaryOneAtOnce)
{
    Scene scene;
    scene.view->setCanDrag(false);
    EXPECT_FALSE(scene.view->canDrag());
    QTest::mousePress(scene.view, Qt::LeftButton, {}, QPoint(50, 10));
    EXPECT_FALSE(scene.view->hasFocus());   // as on a plain view
    ASSERT_EQ(scene.view->ordinary.size(), 1);
    EXPECT_EQ(scene.view->ordinary[0].type, QEvent::MouseButtonPress);
    scene.send(QEvent::MouseMove, {90, 30});
    QTest::mouseRelease(scene.view, Qt::LeftButton, {}, QPoint(90, 30));
    EXPECT_EQ(scene.view->ordinary.size(), 1);
    EXPECT_TRUE(scene.view->attempts.isEmpty());
}

TEST(DragAndDropView, TheDragCarriesTagAndDelegateAndTakesTheFocus)
{
    // The delegate's own answers are the base class's: no label.
    struct Delegate : WQDragAndDropViewDelegate {
    } delegate;
    Scene scene;
    scene.view->realDrag = true;
    scene.view->setTag(-42);
    scene.view->setDelegate(&delegate);
    QSignalSpy finished(scene.view, &WQDragAndDropView::dragFinished);

    EXPECT_EQ(scene.view->delegate(), &delegate);
    scene.send(QEvent::MouseButtonPress, {50, 10});
    scene.send(QEvent::MouseMove, {50, 20});
    EXPECT_EQ(finished.count(), 1);
    EXPECT_TRUE(scene.view->hasFocus());
    EXPECT_FALSE(scene.view->isDragging());
    scene.send(QEvent::MouseButtonRelease, {50, 20});
    EXPECT_TRUE(scene.view->ordinary.isEmpty()) << "the drag had the release";
    // Another button never drags, nor reaches the ordinary handling.
    QTest::mousePress(scene.view, Qt::RightButton, {}, QPoint(50, 10));
    QTest::mouseMove(scene.view, QPoint(90, 30));
    QTest::mouseRelease(scene.view, Qt::RightButton, {}, QPoint(90, 30));
    EXPECT_EQ(finished.count(), 1);
    EXPECT_TRUE(scene.view->ordinary.isEmpty());

    const std::unique_ptr<QMimeData> data = scene.view->dragMimeData();
    ASSERT_TRUE(data);
    EXPECT_EQ(data->formats(), QStringList{kWQPasteboardFlavor_DragAndDropView});
    const std::optional<WQDragAndDropPayload> payload = WQReadDragAndDropPayload(*data);
    ASSERT_TRUE(payload);
    EXPECT_EQ(payload->tag, -42);
    EXPECT_EQ(payload->delegate, WQDelegateIdentity(&delegate));

    // A view whose focus goes elsewhere does not drag: the press waits for
    // its release, swallowing moves, and hands that on.
    Scene refusing;
    refusing.view->realDrag = true;
    refusing.view->setFocusProxy(&refusing.window);
    QSignalSpy none(refusing.view, &WQDragAndDropView::dragFinished);
    refusing.send(QEvent::MouseButtonPress, {50, 10});
    refusing.send(QEvent::MouseMove, {50, 20});
    refusing.send(QEvent::MouseMove, {80, 20});
    EXPECT_EQ(refusing.view->attempts.size(), 1);
    EXPECT_EQ(none.count(), 0);
    EXPECT_TRUE(refusing.view->ordinary.isEmpty());
    refusing.send(QEvent::MouseButtonRelease, {80, 20.5});
    ASSERT_EQ(refusing.view->ordinary.size(), 1);
    EXPECT_EQ(refusing.view->ordinary[0].type, QEvent::MouseButtonRelease);
    EXPECT_EQ(refusing.view->ordinary[0].position, QPointF(80, 20.5));
}

TEST(DragAndDropView, PayloadReadsBackAndRejectsAnythingElse)
{
    for (const WQDragAndDropPayload& p : {WQDragAndDropPayload{0, 0}, WQDragAndDropPayload{7, 0x7ffd12345678u},
                                          WQDragAndDropPayload{std::numeric_limits<qint64>::min(), ~quint64(0)}})
        EXPECT_EQ(WQDragAndDropPayloadFromData(WQDragAndDropPayloadData(p)), p);

    const auto mapData = [](const QVariantMap& map, QByteArray tail = {}) {
        QByteArray data;
        QDataStream out(&data, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_6_0);
        out << map;
        return data + tail;
    };
    const QByteArray good = WQDragAndDropPayloadData({5, 9});
    const QString view = kWQPasteboardFlavor_DragAndDropView, delegate = kWQPasteboardFlavor_Delegate;
    const QByteArray bad[] = {
        QByteArray(),
        QByteArray("not a map at all"),
        good.left(good.size() - 1),                                               // cut short
        good + 'x',                                                               // something after it
        QByteArray(5000, '\0'),                                                   // far too big
        mapData({{view, qlonglong(5)}}),                                          // no delegate
        mapData({{delegate, qulonglong(5)}}),                                     // no tag
        mapData({{view, QStringLiteral("5")}, {delegate, qulonglong(9)}}),        // text, not a number
        mapData({{view, qlonglong(5)}, {delegate, 9.5}}),
        QByteArray::fromHex("ffffffff"),                                          // a huge count
    };
    for (const QByteArray& data : bad)
        EXPECT_FALSE(WQDragAndDropPayloadFromData(data)) << data.toHex().left(40).toStdString();
    EXPECT_EQ(WQDragAndDropPayloadFromData(mapData({{view, 5}, {delegate, 9u}})), (WQDragAndDropPayload{5, 9}));

    QMimeData other;
    other.setText(QStringLiteral("text"));
    EXPECT_FALSE(WQReadDragAndDropPayload(other));
}

TEST(DragImage, RoundedGreyLabelWithEngravedTextFromTheDelegateWhereThereIsRoom)
{
    Labels labels;
    labels.plain = QStringLiteral("Groceries");
    WQDragAndDropView view;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    view.setFont(font);
    view.resize(200, 40);
    view.setDelegate(&labels);

    const qreal textHeight = QFontMetricsF(font).height();
    const QImage image = view.dragImage(1).toImage();
    ASSERT_EQ(image.width(), 176);   // 200 - 24
    EXPECT_NEAR(WQDragLabelSize(view.dragLabel(), font).height(), textHeight, 1);
    EXPECT_NEAR(image.height(), textHeight + 8, 1);

    // Transparent corners, the grey 70% opaque where there is no text.
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(175, image.height() - 1).alpha(), 0);
    const QColor grey = image.pixelColor(170, image.height() / 2);
    EXPECT_NEAR(grey.alpha(), 0.7 * 255, 2);
    EXPECT_NEAR(grey.red(), QColor(Qt::lightGray).red(), 2);

    // The text starts 12 in; black on top, its white edge one row lower.
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < 11; ++x)
            ASSERT_FALSE(dark(image.pixelColor(x, y))) << x << "," << y;
    const QList<int> darkRows = rowsWith(image, dark), lightRows = rowsWith(image, light);
    ASSERT_FALSE(darkRows.isEmpty());
    ASSERT_FALSE(lightRows.isEmpty());
    EXPECT_EQ(lightRows.last(), darkRows.last() + 1);
    EXPECT_GT(lightRows.first(), darkRows.first());
    // Text at 85%, not solid.
    int darkest = 255;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 100)
                darkest = std::min(darkest, image.pixelColor(x, y).lightness());
    EXPECT_GT(darkest, 5);
    EXPECT_LT(darkest, 60);

    // At twice the density: the same label, drawn at that resolution rather
    // than the picture above blown up.
    const QPixmap sharp = view.dragImage(2);
    EXPECT_EQ(sharp.devicePixelRatio(), 2);
    const QImage blownUp = image.scaled(image.size() * 2);
    ASSERT_EQ(sharp.size(), blownUp.size());
    EXPECT_NE(sharp.toImage().convertToFormat(blownUp.format()), blownUp);

    // No delegate, or one that answers nothing: no text, an 8-high label.
    labels.plain.reset();
    view.resize(120, 30);
    for (WQDragAndDropViewDelegate* delegate : {static_cast<WQDragAndDropViewDelegate*>(nullptr),
                                                static_cast<WQDragAndDropViewDelegate*>(&labels)}) {
        view.setDelegate(delegate);
        EXPECT_TRUE(view.dragLabel().isEmpty());
        const QImage empty = view.dragImage(1).toImage();
        EXPECT_EQ(empty.size(), QSize(96, 8));
        EXPECT_TRUE(rowsWith(empty, dark).isEmpty());
    }

    labels.plain = QStringLiteral("Rent");
    EXPECT_EQ(view.dragLabel().toPlainText(), QStringLiteral("Rent"));
    labels.attributed = QTextDocumentFragment::fromHtml(QStringLiteral("<b>Rent</b> due"));
    EXPECT_EQ(view.dragLabel().toPlainText(), QStringLiteral("Rent due"));
    // Formatted text keeps its font; its colour is the engraving's.
    labels.attributed = QTextDocumentFragment::fromHtml(QStringLiteral("<span style=\"color:#ff0000; font-size:30px\">Rent</span>"));
    const QImage big = view.dragImage(1).toImage();
    EXPECT_GT(big.height(), 30 + 8 - 1);
    for (int y = 0; y < big.height(); ++y)
        for (int x = 0; x < big.width(); ++x) {
            const QColor c = big.pixelColor(x, y);
            ASSERT_LT(c.red() - c.green(), 30) << "red text at " << x << "," << y;
        }

    // The geometry keeps its rules even when narrow: no label at all then.
    EXPECT_EQ(WQDragImageSize(20, QSizeF(80, 15)), QSizeF(-4, 23));   // no guard
    EXPECT_EQ(WQDragImageOrigin(QSizeF(200, 10), QSizeF(176, 23)), QPointF(12, -6.5));
    for (int width : {24, 20, 0}) {
        view.resize(width, 30);
        EXPECT_TRUE(view.dragImage(1).isNull()) << width;
    }
}
