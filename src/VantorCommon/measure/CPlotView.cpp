// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/measure/CPlotView.h>

#include <VantorCommon/measure/CMeasurementModel.h>

#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr QSize kHint(320, 180);
constexpr QSize kMinimum(120, 140);
constexpr int kTickGap = 60; // widget pixels between two ticks, at least
constexpr int kRowGap = 28;
constexpr int kFewestTicks = 2; // of y, even if there is hardly room
constexpr int kMostTicks = 10;  // that are wanted to have the fewest
constexpr int kTick = 4;
constexpr int kFillAlpha = 110;
constexpr double kPictureScale = 2.0;

/// Round numbers between two others, about as many as wanted.
std::vector<double> RoundTicks(double dblMin, double dblMax, int nWanted)
{
    std::vector<double> vctTicks;
    const double dblRaw = (dblMax - dblMin) / std::max(1, nWanted);
    if (!(dblRaw > 0.0) || !std::isfinite(dblRaw))
        return vctTicks;
    const double dblPower = std::pow(10.0, std::floor(std::log10(dblRaw)));
    double dblStep = 10.0 * dblPower;
    for (const double dblFactor : {5.0, 2.0, 1.0})
        if (dblFactor * dblPower >= dblRaw)
            dblStep = dblFactor * dblPower;
    const double dblFirst = std::ceil(dblMin / dblStep);
    const auto nTicks = static_cast<int>(std::floor(dblMax / dblStep) - dblFirst);
    for (int i = 0; i <= nTicks; ++i)
        vctTicks.push_back((dblFirst + i) * dblStep);
    return vctTicks;
}

QString TickText(double dblValue)
{
    return QString::number(dblValue, 'g', 6);
}

QPalette Paper()
{
    QPalette palette(Qt::white);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Mid, QColor(200, 200, 200));
    return palette;
}
} // namespace

int SPlot::Count() const
{
    return vctSeries.empty() ? 0 : static_cast<int>(vctSeries.front().vctValues.size());
}

QByteArray SPlot::ToTable(char cSeparator) const
{
    QByteArray table = strX.toUtf8();
    for (const SPlotSeries& series : vctSeries)
        table += cSeparator + series.strName.toUtf8();
    table += '\n';
    for (int i = 0; i < Count(); ++i) {
        table += QByteArray::number(PlaceOf(i), 'g', QLocale::FloatingPointShortest);
        for (const SPlotSeries& series : vctSeries) {
            const double dblValue = series.vctValues[static_cast<std::size_t>(i)];
            table += cSeparator;
            if (!std::isnan(dblValue))
                table += QByteArray::number(dblValue, 'g', QLocale::FloatingPointShortest);
        }
        table += '\n';
    }
    return table;
}

CPlotView::CPlotView(QWidget* pParent) : QWidget(pParent)
{
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

CPlotView::~CPlotView() = default;

void CPlotView::SetPlot(SPlot sPlot)
{
    m_sPlot = std::move(sPlot);
    m_rangeY = RangeOfY();
    update();
    const QPoint pos = mapFromGlobal(QCursor::pos());
    const bool bOver = m_nHovered >= 0 && underMouse();
    m_nHovered = bOver ? IndexAt(pos) : -1;
    Q_EMIT signal_Hover(m_nHovered);
}

QSize CPlotView::sizeHint() const
{
    return kHint;
}

QSize CPlotView::minimumSizeHint() const
{
    return kMinimum;
}

/// Bars stand on 0; curves have their values between the least and the greatest.
CPlotView::SRange CPlotView::RangeOfY() const
{
    double dblMin = HUGE_VAL;
    double dblMax = -HUGE_VAL;
    for (const SPlotSeries& series : m_sPlot.vctSeries)
        for (const double dblValue : series.vctValues)
            if (std::isfinite(dblValue)) {
                dblMin = std::min(dblMin, dblValue);
                dblMax = std::max(dblMax, dblValue);
            }
    if (dblMin > dblMax)
        return {0.0, 1.0};
    if (m_sPlot.bBars)
        return {0.0, std::max(dblMax, 1.0)};
    return dblMin < dblMax ? SRange{dblMin, dblMax} : SRange{dblMin - 1.0, dblMax + 1.0};
}

CPlotView::SRange CPlotView::RangeOfX() const
{
    const int nSteps = std::max(1, m_sPlot.bBars ? m_sPlot.Count() : m_sPlot.Count() - 1);
    return {m_sPlot.dblStart, m_sPlot.PlaceOf(nSteps)};
}

/// Between the axes.
QRectF CPlotView::Inner() const
{
    int nWidth = 0;
    for (const double dblTick : TicksOfY())
        nWidth = std::max(nWidth, fontMetrics().horizontalAdvance(TickText(dblTick)));
    const int nText = fontMetrics().height();
    return QRectF(rect()).adjusted(nWidth + 3 * kTick, nText / 2.0 + 1, -nText, -(2 * nText + 2 * kTick));
}

std::vector<double> CPlotView::TicksOfY() const
{
    int nWanted = std::max(kFewestTicks, height() / kRowGap - 2);
    if (!m_sPlot.bLogarithmic) {
        std::vector<double> vctTicks = RoundTicks(m_rangeY.dblMin, m_rangeY.dblMax, nWanted);
        for (; static_cast<int>(vctTicks.size()) < kFewestTicks && nWanted < kMostTicks; ++nWanted)
            vctTicks = RoundTicks(m_rangeY.dblMin, m_rangeY.dblMax, nWanted);
        return vctTicks;
    }
    std::vector<double> vctTicks{0.0};
    const double dblStep = std::max(1.0, std::ceil(std::log10(m_rangeY.dblMax + 1.0) / nWanted));
    for (double dblPower = 0.0; std::pow(10.0, dblPower) <= m_rangeY.dblMax; dblPower += dblStep)
        vctTicks.push_back(std::pow(10.0, dblPower));
    return vctTicks;
}

double CPlotView::HeightOf(double dblValue) const
{
    return m_sPlot.bLogarithmic ? std::log1p(std::max(0.0, dblValue)) : dblValue;
}

double CPlotView::XOf(double dblPlace) const
{
    const QRectF inner = Inner();
    const SRange range = RangeOfX();
    return inner.left() + (dblPlace - range.dblMin) / (range.dblMax - range.dblMin) * inner.width();
}

double CPlotView::YOf(double dblValue) const
{
    const QRectF inner = Inner();
    const double dblBottom = HeightOf(m_rangeY.dblMin);
    const double dblTop = HeightOf(m_rangeY.dblMax);
    return inner.bottom() - (HeightOf(dblValue) - dblBottom) / (dblTop - dblBottom) * inner.height();
}

QPointF CPlotView::PointOf(int nIndex, double dblValue) const
{
    const double dblMiddle = m_sPlot.bBars ? m_sPlot.dblStep / 2.0 : 0.0;
    return {XOf(m_sPlot.PlaceOf(nIndex) + dblMiddle), YOf(dblValue)};
}

int CPlotView::IndexAt(const QPoint& pos) const
{
    const QRectF inner = Inner();
    const int nCount = m_sPlot.Count();
    if (nCount == 0 || pos.x() < inner.left() || pos.x() > inner.right() || inner.width() <= 0.0)
        return -1;
    const double dblSteps =
        (pos.x() - inner.left()) / inner.width() * std::max(1, m_sPlot.bBars ? nCount : nCount - 1);
    const double dblIndex = m_sPlot.bBars ? std::floor(dblSteps) : std::round(dblSteps);
    return std::clamp(static_cast<int>(dblIndex), 0, nCount - 1);
}

void CPlotView::PaintAxes(QPainter& painter, const QPalette& palette) const
{
    const QRectF inner = Inner();
    const QFontMetrics metrics = fontMetrics();
    const SRange range = RangeOfX();
    const QColor& line = palette.color(QPalette::Mid);
    const QColor& text = palette.color(QPalette::Text);
    for (const double dblTick :
         RoundTicks(range.dblMin, range.dblMax, static_cast<int>(inner.width()) / kTickGap)) {
        const double x = XOf(dblTick);
        painter.setPen(line);
        painter.drawLine(QPointF(x, inner.bottom()), QPointF(x, inner.bottom() + kTick));
        painter.setPen(text);
        const QRectF box(x - kTickGap / 2.0, inner.bottom() + kTick, kTickGap, metrics.height());
        painter.drawText(box, Qt::AlignHCenter | Qt::AlignTop, TickText(dblTick));
    }
    for (const double dblTick : TicksOfY()) {
        const double y = YOf(dblTick);
        painter.setPen(line);
        painter.drawLine(QPointF(inner.left() - kTick, y), QPointF(inner.right(), y));
        painter.setPen(text);
        const QRectF box(0.0, y - metrics.height() / 2.0, inner.left() - 2 * kTick, metrics.height());
        painter.drawText(box, Qt::AlignRight | Qt::AlignVCenter, TickText(dblTick));
    }
    painter.drawText(
        QRectF(inner.left(), inner.bottom() + kTick + metrics.height(), inner.width(), metrics.height()),
        Qt::AlignHCenter | Qt::AlignTop, m_sPlot.strX);
    painter.setPen(line);
    painter.drawRect(inner);
}

void CPlotView::PaintSeries(QPainter& painter, const SPlotSeries& series, const QColor& color) const
{
    const auto nCount = static_cast<int>(series.vctValues.size());
    QPainterPath path;
    bool bGap = true;
    if (m_sPlot.bBars)
        path.moveTo(XOf(m_sPlot.dblStart), YOf(0.0));
    for (int i = 0; i < nCount; ++i) {
        const double dblValue = series.vctValues[static_cast<std::size_t>(i)];
        if (m_sPlot.bBars) {
            const double y = YOf(std::isfinite(dblValue) ? dblValue : 0.0);
            path.lineTo(XOf(m_sPlot.PlaceOf(i)), y);
            path.lineTo(XOf(m_sPlot.PlaceOf(i + 1)), y);
        } else if (std::isfinite(dblValue)) {
            bGap ? path.moveTo(PointOf(i, dblValue)) : path.lineTo(PointOf(i, dblValue));
            bGap = false;
        } else {
            bGap = true;
        }
    }
    QColor fill = color;
    fill.setAlpha(kFillAlpha);
    if (m_sPlot.bBars) {
        path.lineTo(XOf(m_sPlot.PlaceOf(nCount)), YOf(0.0));
        painter.fillPath(path, fill);
    } else {
        painter.setPen(QPen(color, 1.25));
        painter.drawPath(path);
    }
}

void CPlotView::PaintMark(QPainter& painter, const QPalette& palette) const
{
    if (m_nHovered < 0 || m_nHovered >= m_sPlot.Count())
        return;
    const double x = PointOf(m_nHovered, 0.0).x();
    painter.setPen(QPen(palette.color(QPalette::Highlight), 1.0));
    painter.drawLine(QPointF(x, Inner().top()), QPointF(x, Inner().bottom()));
}

void CPlotView::Paint(QPainter& painter, const QPalette& palette) const
{
    painter.fillRect(rect(), palette.color(QPalette::Base));
    if (m_sPlot.Count() == 0 || Inner().width() <= 0.0 || Inner().height() <= 0.0)
        return;
    PaintAxes(painter, palette);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const SPlotSeries& series : m_sPlot.vctSeries)
        PaintSeries(painter, series, series.color.isValid() ? series.color : palette.color(QPalette::Text));
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void CPlotView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    Paint(painter, palette());
    PaintMark(painter, palette());
}

QImage CPlotView::GetPicture() const
{
    QImage picture(size() * kPictureScale, QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    picture.setDevicePixelRatio(kPictureScale);
    QPainter painter(&picture);
    painter.setFont(font());
    Paint(painter, Paper());
    return picture;
}

void CPlotView::SetHovered(int nIndex)
{
    if (std::exchange(m_nHovered, nIndex) == nIndex)
        return;
    update();
    Q_EMIT signal_Hover(nIndex);
}

void CPlotView::mouseMoveEvent(QMouseEvent* pEvent)
{
    SetHovered(IndexAt(pEvent->pos()));
}

void CPlotView::leaveEvent(QEvent*)
{
    SetHovered(-1);
}
