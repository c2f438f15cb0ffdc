// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QDialog>
#include <QPoint>
#include <QRect>

class CSnipToolModel;

/// The overlay of the snip tool: a frameless, translucent window that greys the screen except for the
/// rectangle dragged with the left mouse button, which is cut out of it.
///
/// It knows no other class and grabs nothing; it only announces the selection. Its user chooses the screen.
/// Hiding it ends a drag. It is a separate window even with a parent, and stays when that is minimised. GUI
/// thread only.
class VANTORCOMMON_EXPORT CSnipTool : public QDialog
{
    Q_OBJECT

public:
    /// Hidden at first.
    /// @param pModel  not owned, may be null
    /// @param parent  owns the tool; may be null
    CSnipTool(CSnipToolModel* pModel, QWidget* parent);
    ~CSnipTool() override;

Q_SIGNALS:
    /// A drag has ended. From the press (top left) to the release (bottom right) in global coordinates, both
    /// included. Deliberate: not normalised; a drag to the left or upwards gives a size of zero or less.
    void signal_CaptureScreen(const QRect& rect);
    /// Escape was pressed.
    void signal_ExitCapture();

protected:
    /// @{
    /// The cross cursor comes with showing; hiding drops the selection; closing restores the arrow.
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    /// @}
    /// Escape emits signal_ExitCapture; it ignores all other keys.
    void keyPressEvent(QKeyEvent* pEvent) override;
    /// @{
    /// The left button drags the selection; the others do nothing.
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    /// @}
    /// The grey, the hole and its green outline.
    void paintEvent(QPaintEvent* pEvent) override;

private:
    CSnipToolModel* m_pModel;
    bool m_bPressed = false; ///< while the left drag is under way
    QPoint m_ptStart;        ///< of the press, in widget coordinates
    QRect m_rectSelect;      ///< in widget coordinates, not normalised; null without a selection
};
