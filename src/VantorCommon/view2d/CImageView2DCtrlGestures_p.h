// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/edit/DrawHandler_p.h>
#include <VantorCommon/annotation/edit/KeyHandler_p.h>
#include <VantorCommon/annotation/edit/SelectHandler_p.h>
#include <VantorCommon/annotation/edit/TextHandler_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QObject>

class CCommand;
class QMouseEvent;

/// The gestures of a 2D controller: passes drawing, selecting and writing to their handlers, by the mode of
/// the tool model, and ends gestures that have no release. Points are image coordinates.
class CImageView2DCtrlGestures : public QObject
{
public:
    /// @param execute  records a step, executes it and returns the recorded step
    CImageView2DCtrlGestures(const SImageView2DCtrlContext& context,
                             const std::function<CCommand*(std::unique_ptr<CCommand>)>& execute);

    /// Starts watching the view and the mode.
    void Watch();
    /// Ends a drag in progress and undoes its changes; a polygon in progress stays.
    void Interrupt();

    int Mode() const;
    void SetMode(int nMode);
    /// The distance within which a point counts as on a handle, in image pixels.
    double HandleTolerance() const;

    /// @{
    /// The drag that draws the kind of a mode, and the mouse between two clicks.
    void StartShape(int nMode, const QPointF& point);
    void DoShape(int nMode, const QPointF& start, const QPointF& current);
    void EndShape(int nMode, const QPointF& start, const QPointF& end);
    void WaitForClick(const QPointF& point);
    /// @}
    /// The press of the selecting mode; Select() handles the rest of the drag.
    void StartSelecting(const QPointF& point);
    CSelectHandler& Select() { return m_select; }
    /// The menu of the first annotation whose bounding rectangle contains the point, or of the image.
    void ShowMenuAt(const QPointF& point);
    /// A key of Qt::Key.
    void PressKey(int nKey);

protected:
    /// Watches the view for events that end a gesture without a release, for a double click on a text, and
    /// for the keys of SCenterOptions::bEditKeys.
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool EditTextAt(const QMouseEvent& event);
    bool IsForKeys(QEvent& event);
    QPointF Constrained(const SShapeKind& kind, const QPointF& start, const QPointF& point) const;

    const SImageView2DCtrlContext& m_context;
    SEditContext m_edit;
    CDrawHandler m_draw;
    CSelectHandler m_select;
    CTextHandler m_text;
    CKeyHandler m_keys;
};
