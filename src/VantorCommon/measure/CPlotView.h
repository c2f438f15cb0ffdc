// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>
#include <vector>

/// One curve, or one row of bars.
struct SPlotSeries {
    QString strName;               ///< for tables
    QColor color;                  ///< not valid: that of texts
    std::vector<double> vctValues; ///< at equal distances; NaN is a gap
};

/// What a plot shows. The value i of each series stands at dblStart + i dblStep.
struct VANTORCOMMON_EXPORT SPlot {
    std::vector<SPlotSeries> vctSeries; ///< of equal length
    double dblStart = 0.0;              ///< where the first value stands
    double dblStep = 1.0;               ///< > 0
    QString strX;                       ///< what stands along x, for the axis and tables
    bool bBars = false;        ///< bars from 0, each as wide as a step from its place; otherwise curves
    bool bLogarithmic = false; ///< heights by log(1 + value), for values >= 0

    /// The number of values of a series.
    int Count() const;
    /// The place of a value along x.
    double PlaceOf(int nIndex) const { return dblStart + nIndex * dblStep; }
    /// A line of headers and one for each place, numbers with a dot; nothing for NaN.
    /// @param cSeparator  such as ',' for CSV
    QByteArray ToTable(char cSeparator) const;
};

/// Paints curves or bars with their axes, and tells which value is under the mouse. It belongs to its Qt
/// parent. GUI thread only.
class VANTORCOMMON_EXPORT CPlotView : public QWidget
{
    Q_OBJECT

public:
    /// Without a plot.
    explicit CPlotView(QWidget* pParent = nullptr);
    ~CPlotView() override;

    /// Shows another plot. The mark stays at its place if there is one.
    void SetPlot(SPlot sPlot);
    const SPlot& GetPlot() const { return m_sPlot; } ///< what is shown
    /// The value nearest to a point of the widget; -1 beside the axes.
    int IndexAt(const QPoint& pos) const;
    /// Where a value of a series is painted, in the widget; for a bar the middle of its top.
    QPointF PointOf(int nIndex, double dblValue) const;
    /// The plot on white paper, as large as the widget, with twice as many pixels each way.
    QImage GetPicture() const;

    /// @{
    /// Room for the axes and their numbers.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    /// @}

Q_SIGNALS:
    /// The mouse is over another value; -1: over none.
    void signal_Hover(int nIndex);

protected:
    void paintEvent(QPaintEvent* pEvent) override; ///< the plot, with a line at the value under the mouse
    /// @{
    /// Tell the value under the mouse.
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void leaveEvent(QEvent* pEvent) override;
    /// @}

private:
    struct SRange {
        double dblMin;
        double dblMax;
    };

    void Paint(QPainter& painter, const QPalette& palette) const;
    void PaintAxes(QPainter& painter, const QPalette& palette) const;
    void PaintSeries(QPainter& painter, const SPlotSeries& series, const QColor& color) const;
    void PaintMark(QPainter& painter, const QPalette& palette) const;
    std::vector<double> TicksOfY() const;
    QRectF Inner() const;
    SRange RangeOfX() const;
    SRange RangeOfY() const;
    double XOf(double dblPlace) const;
    double YOf(double dblValue) const;
    double HeightOf(double dblValue) const;
    void SetHovered(int nIndex);

    SPlot m_sPlot;
    SRange m_rangeY{0.0, 1.0};
    int m_nHovered = -1;
};
