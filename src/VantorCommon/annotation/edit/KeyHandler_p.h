// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/edit/EditContext_p.h>

#include <QElapsedTimer>
#include <QPointF>
#include <memory>
#include <vector>

class CDrawHandler;
class CImageView2DDrawableObject;
class QKeyEvent;

/// The keys of SCenterOptions::bEditKeys.
///
/// Arrow keys that follow each other within a second, with nothing between, are a burst: one step, which
/// grows with each of them.
class CKeyHandler
{
public:
    CKeyHandler(const SEditContext& context, CDrawHandler& draw) : m_context(context), m_draw(draw) {}

    /// @return whether the key meant something
    bool Press(const QKeyEvent& event);
    /// What comes next is a step of its own.
    void EndBurst() { m_pStep = nullptr; }

private:
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

    bool PressDrawing(int nKey);
    bool MoveSelected(const QPointF& by);
    void BeginBurst(std::vector<ObjectPtr> vctMoved, const QPointF& by);

    const SEditContext& m_context;
    CDrawHandler& m_draw;
    CCommand* m_pStep = nullptr; ///< of the burst; the history keeps it
    std::vector<ObjectPtr> m_vctMoved;
    std::shared_ptr<QPointF> m_pBy; ///< by how much it has moved them, shared with the step
    QElapsedTimer m_sinceKey;
};
