// The drag image of a view with a 40-character label: WQDrawDragImage (the
// label laid out as formatted text, drawn twice for the engraving) at 1x and
// 2x, against the least any such picture costs: one rounded rectangle and
// one plain drawText of the same string into a pixmap of the same size.

#include <WQGeneral/dragging/WQDragImage.h>

#include "WQBenchRecorder.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include <cstdio>

namespace {

const QString kLabel = QStringLiteral("Household budget: groceries and utility!");   // 40 characters
constexpr qreal kViewWidth = 360;

QFont labelFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(13);
    return font;
}

void BM_DrawDragImage(benchmark::State& state)
{
    const QTextDocumentFragment label = QTextDocumentFragment::fromPlainText(kLabel);
    const QFont font = labelFont();
    const qreal ratio = qreal(state.range(0));
    for (auto _ : state) {
        QPixmap image = wq::WQDrawDragImage(label, font, kViewWidth, ratio);
        benchmark::DoNotOptimize(image);
    }
}

void BM_PlainRoundedLabel(benchmark::State& state)
{
    const QFont font = labelFont();
    const qreal ratio = qreal(state.range(0));
    const QSizeF size(kViewWidth - 24, QFontMetricsF(font).height() + 8);
    for (auto _ : state) {
        QPixmap image((size * ratio).toSize());
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addRoundedRect(QRectF(QPointF(), size), 10, 10);
        painter.fillPath(path, QColor(192, 192, 192, 178));
        painter.setFont(font);
        painter.drawText(QPointF(12, 4 + QFontMetricsF(font).ascent()), kLabel);
        painter.end();
        benchmark::DoNotOptimize(image);
    }
}

BENCHMARK(BM_DrawDragImage)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_PlainRoundedLabel)->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    wq::bench::WQBenchRecorder recorder;
    if (!wq::bench::runBenchmarks(argc, argv, recorder))
        return 1;
    using Clock = wq::bench::WQBenchRecorder::Clock;
    const std::string label = "Drag image, " + std::to_string(kLabel.size()) + "-character label";
    for (const char* ratio : {"1", "2"})
        recorder.targetTime(label + ", device pixel ratio " + ratio, std::string("BM_DrawDragImage/") + ratio, 1e6,
                            std::string("BM_PlainRoundedLabel/") + ratio, Clock::Real);
    recorder.finish("bench_views");
    return 0;
}
