// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "ReferenceSteps.h"

#include <VantorCommon/log/CLogModel.h>
#include <tests/support/EditFixture.h>

#include <random>

/// Drives the real view and the plain second model, for tests with random steps.
namespace UndoDriver
{
using namespace Vantor::Geometry;
using Reference::Kind;
using Reference::Shape;

constexpr double kClear = 1e-6; // image pixels: how far a point keeps away from every decision
constexpr double kClose = 1e-6; // image pixels: agreement of the two models
constexpr int kSeed = 20261121;
constexpr int kManyObjects = 25; // from here on steps rather delete

inline int FromEnvironment(const char* szName, int nDefault)
{
    bool bOk = false;
    const int nValue = qEnvironmentVariableIntValue(szName, &bOk);
    return bOk ? nValue : nDefault;
}

inline Shape ShapeOf(const EditFixture::ObjectPtr& pObject)
{
    const auto toQt = [](const CPoint<double>& p) { return QPointF(p.x(), p.y()); };
    if (const auto pLine = EditFixture::ShapeOf<CLine>(pObject))
        return {Kind::Line, {toQt(pLine->start()), toQt(pLine->end())}};
    if (const auto pPolygon = EditFixture::ShapeOf<CPolygon>(pObject)) {
        Shape shape{Kind::Polygon, {}};
        for (const auto& vertex : pPolygon->GetVertices())
            shape.points.push_back(toQt(vertex));
        return shape;
    }
    const Kind kind = EditFixture::ShapeOf<CEllipse>(pObject) ? Kind::Ellipse : Kind::Rectangle;
    const auto pBox = EditFixture::ShapeOf<CBox>(pObject);
    return {kind, {toQt(pBox->topLeft()), toQt(pBox->bottomRight())}};
}

inline bool IsClose(const Shape& a, const Shape& b)
{
    const auto close = [](const QPointF& p, const QPointF& q) {
        return std::abs(p.x() - q.x()) <= kClose && std::abs(p.y() - q.y()) <= kClose;
    };
    return a.kind == b.kind &&
           std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(), close);
}

inline QString NameOf(const Reference::Object& object)
{
    if (!object.name.isEmpty())
        return object.name;
    const char* const names[] = {"Rectangle", "Ellipse", "Line", "Polygon"};
    return QString::asprintf("%s_%u", names[int(object.shape.kind)], object.uid);
}

/// Drives the real view with events and the second model with what they ought to mean.
class Driver
{
public:
    Driver(unsigned int nSeed, const QStringList& lstFiles) : m_random(nSeed), m_files(lstFiles)
    {
        auto* pLog = CLogModel::GetInstance();
        QObject::disconnect(pLog, &CLogModel::signal_NewMessage, pLog, &CLogModel::slot_NewMessage);
        TakePagesOver();
        TakeZoomOver();
    }
    virtual ~Driver() = default;

    /// One random step; linear ones leave out undo, redo and what cannot be undone.
    virtual void Step(bool bLinear)
    {
        const int n = Pick(100);
        if (n < 22)
            m_editor.objects.size() < kManyObjects ? DrawShape() : Delete();
        else if (n < 28)
            m_editor.objects.size() < kManyObjects ? DrawPolygon() : Delete();
        else if (n < 48)
            DragSomewhere();
        else if (n < 56)
            DragHandle();
        else if (n < 59)
            ControlClick();
        else if (n < 63)
            Delete();
        else if (n < 71)
            Zoom();
        else if (n < 74)
            Rotate();
        else if (bLinear)
            DragSomewhere();
        else if (n < 77)
            TurnPage();
        else if (n < 79)
            Load();
        else if (n < 90)
            Undo();
        else
            Redo();
    }

    void Undo()
    {
        m_strStep = QStringLiteral("undo");
        SendKey(Qt::Key_Z, Qt::ControlModifier);
        TakeZoomOver(); // the step may have turned to another page
        m_editor.UndoLast();
    }
    void Redo()
    {
        m_strStep = QStringLiteral("redo");
        SendKey(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        TakeZoomOver();
        m_editor.RedoLast();
    }
    bool CanUndo() const { return !m_editor.undo.empty(); }
    bool CanRedo() const { return !m_editor.redo.empty(); }
    const Reference::Editor& Editor() const { return m_editor; }

    /// Empty, or the first difference. Where both agree the second model takes the exact numbers over.
    QString Compare()
    {
        const auto vctObjects = m_f.geometry.GetObjects();
        if (vctObjects.size() != m_editor.objects.size())
            return Told(
                QString::asprintf("%zu objects, not %zu", vctObjects.size(), m_editor.objects.size()));
        for (std::size_t i = 0; i < vctObjects.size(); ++i) {
            const auto& pReal = vctObjects[i];
            Reference::Object& object = *m_editor.objects[i];
            if (object.uid == 0)
                object.uid = pReal->GetUID();
            if (pReal->GetUID() != object.uid || pReal->GetName() != NameOf(object))
                return Told(QString::asprintf("place %zu holds %u, not %u", i, pReal->GetUID(), object.uid));
            if (pReal->GetSelected() != object.selected)
                return Told(QString::asprintf("selection of %u", object.uid));
            if (!(ShapeOf(pReal) == object.shape) && !(m_bRounds && IsClose(ShapeOf(pReal), object.shape)))
                return Told(QString::asprintf("shape of %u", object.uid));
        }
        if (m_f.images.GetCurrentIndex() != m_editor.page || Pages() != m_editor.pages)
            return Told(QStringLiteral("pages"));
        if (m_f.view->GetImageUID() != m_editor.pages[std::size_t(m_editor.page)])
            return Told(QStringLiteral("image shown"));
        if (!m_f.geometry.GetObjectDrawing().empty() || m_f.geometry.GetObjectDrawingWaiting())
            return Told(QStringLiteral("something is still being drawn"));
        if (m_f.tool.GetViewMode() != EImageView2DMode_Selecting)
            return Told(QStringLiteral("mode"));
        TakeShapesOver();
        return {};
    }

    void Breathe()
    {
        QCoreApplication::processEvents();
        while (!CLogModel::GetInstance()->IsEmpty())
            CLogModel::GetInstance()->slot_OnTimer();
    }

protected:
    QString Told(const QString& strWhat) const { return m_strStep + QStringLiteral(": ") + strWhat; }
    int Pick(int nCount) { return std::uniform_int_distribution<int>(0, nCount - 1)(m_random); }
    QPoint RandomPixel() { return QPoint(Pick(m_f.view->width()), Pick(m_f.view->height())); }

    QPointF ImageAt(const QPoint& pixel) const
    {
        const QRect port = m_f.view->GetViewPort();
        const auto pImage = m_f.images.GetCurrentImage();
        return QPointF((pixel.x() - port.left()) * double(pImage->GetWidth()) / port.width(),
                       (pixel.y() - port.top()) * double(pImage->GetHeight()) / port.height());
    }
    /// A pixel where no decision is close; the last one tried if there is none.
    QPoint ClearPixel()
    {
        QPoint pixel = RandomPixel();
        for (int i = 0; i < 200 && m_editor.Margin(ImageAt(pixel)) < kClear; ++i)
            pixel = RandomPixel();
        return pixel;
    }

    void Send(QEvent::Type type, const QPoint& pixel, bool bDown)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const Qt::MouseButtons buttons = bDown ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, pixel, m_f.view->mapToGlobal(pixel), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(m_f.view, &event);
    }
    void Hover(const QPoint& pixel)
    {
        Send(QEvent::MouseMove, pixel + QPoint(1, 1), false);
        Send(QEvent::MouseMove, pixel, false);
    }
    void PressAt(const QPoint& pixel) { Send(QEvent::MouseButtonPress, pixel, true); }
    void MoveTo(const QPoint& pixel) { Send(QEvent::MouseMove, pixel, true); }
    void ReleaseAt(const QPoint& pixel) { Send(QEvent::MouseButtonRelease, pixel, false); }
    void SendKey(int nKey, Qt::KeyboardModifiers modifiers)
    {
        m_bRounds = nKey != Qt::Key_Delete && !(modifiers & Qt::ControlModifier);
        if (modifiers & Qt::ShiftModifier)
            m_bRounds = true; // a redo on top of other steps works its shape out anew
        QKeyEvent event(QEvent::KeyPress, nKey, modifiers);
        QCoreApplication::sendEvent(m_f.view, &event);
        if (modifiers)
            QTest::keyRelease(m_f.Window(), Qt::Key_Control); // or the next press would find it held
    }

    Reference::ObjectPtr NewObject(Shape shape)
    {
        auto pObject = std::make_shared<Reference::Object>();
        pObject->shape = std::move(shape);
        if (const auto pReal = m_f.geometry.GetAt(0))
            pObject->uid = pReal->GetUID();
        return pObject;
    }

    void DrawShape()
    {
        m_bRounds = true;
        const int nMode = EImageView2DMode_Drawing_Rectanlge + Pick(4);
        const bool bLine = nMode == EImageView2DMode_Drawing_Polygon;
        m_strStep = QString::asprintf("draw %d", nMode);
        m_f.tool.SetViewMode(bLine ? EImageView2DMode_Drawing_Line : EImageView2DMode(nMode));
        const QPoint from = RandomPixel();
        const QPoint to = Pick(10) == 0 ? from : RandomPixel();
        PressAt(from);
        for (int i = Pick(3); i > 0; --i)
            MoveTo(RandomPixel());
        if (Pick(12) == 0) {
            SendKey(Qt::Key_Escape, Qt::NoModifier);
            ReleaseAt(to);
            return;
        }
        ReleaseAt(to);
        const QPointF a = ImageAt(from);
        const QPointF b = ImageAt(to);
        Shape shape{nMode == EImageView2DMode_Drawing_Rectanlge ? Kind::Rectangle : Kind::Ellipse, {a, b}};
        if (bLine)
            shape.kind = Kind::Line;
        if (nMode == EImageView2DMode_Drawing_Circle) {
            const double r = std::hypot(b.x() - a.x(), b.y() - a.y());
            shape.points = {a - QPointF(r, r), a + QPointF(r, r)};
        }
        m_editor.Make(std::make_shared<Reference::AddStep>(NewObject(shape)));
    }

    void DrawPolygon()
    {
        m_bRounds = true;
        m_strStep = QStringLiteral("polygon");
        m_f.tool.SetViewMode(EImageView2DMode_Drawing_Polygon);
        const QPoint first = RandomPixel();
        const QPointF start = ImageAt(first);
        Shape shape{Kind::Polygon, {start}};
        for (int nEdges = 0, nClicks = 3 + Pick(4);; ++nEdges) {
            QPoint pixel = nEdges == 0 || nEdges >= nClicks ? first : RandomPixel();
            const auto distance = [&] { return QLineF(ImageAt(pixel), start).length(); };
            while (pixel != first && std::abs(distance() - m_editor.tolerance) < kClear)
                pixel = RandomPixel();
            Send(QEvent::MouseMove, pixel, false);
            PressAt(pixel);
            ReleaseAt(pixel);
            if (nEdges >= 3 && distance() <= m_editor.tolerance)
                break;
            if (ImageAt(pixel) != shape.points.back())
                shape.points.push_back(ImageAt(pixel));
        }
        while (shape.points.size() > 1 && shape.points.back() == start)
            shape.points.pop_back();
        m_editor.Make(std::make_shared<Reference::AddStep>(NewObject(shape)));
    }

    /// Press, moves and release in selecting mode; sometimes the drag comes back or is given up.
    void DragSomewhere() { Drag(ClearPixel(), QStringLiteral("drag")); }
    void DragHandle()
    {
        if (m_editor.objects.empty())
            return;
        const auto& pObject = m_editor.objects[std::size_t(Pick(int(m_editor.objects.size())))];
        const auto handles = pObject->shape.Handles();
        const QPointF handle = m_f.view->MapToWidget(handles[std::size_t(Pick(int(handles.size())))]);
        const QPoint pixel = handle.toPoint() + QPoint(Pick(11) - 5, Pick(11) - 5);
        if (m_f.view->rect().contains(pixel) && m_editor.Margin(ImageAt(pixel)) >= kClear)
            Drag(pixel, QStringLiteral("pull"));
    }

    void Drag(const QPoint& from, const QString& strStep)
    {
        m_bRounds = true;
        m_strStep = strStep;
        const QPointF start = ImageAt(from);
        Hover(from);
        const bool bResize = m_editor.OnHandle(start);
        PressAt(from);
        const bool bHit = m_editor.Press(start, false);
        std::vector<QPoint> vctWay;
        for (int i = Pick(4); i > 0; --i)
            vctWay.push_back(Pick(8) == 0 ? from : ClearPixel());
        for (const QPoint& pixel : vctWay) {
            MoveTo(pixel);
            if (pixel == from)
                continue;
            if (bResize)
                SelectHandleOwner(start);
            else if (!bHit)
                m_editor.Band(start, ImageAt(pixel));
        }
        if (Pick(15) == 0)
            SendKey(Qt::Key_Escape, Qt::NoModifier);
        else if (!vctWay.empty() && vctWay.back() != from)
            MakeDragStep(start, ImageAt(vctWay.back()), bResize, bHit);
        ReleaseAt(vctWay.empty() ? from : vctWay.back());
        Hover(from);
    }
    Reference::ObjectPtr HandleOwner(const QPointF& point) const
    {
        for (const auto& pObject : m_editor.objects)
            if (!pObject->locked && pObject->shape.FindHandle(point, m_editor.tolerance) >= 0)
                return pObject;
        return nullptr;
    }
    void SelectHandleOwner(const QPointF& point)
    {
        if (const auto pOwner = HandleOwner(point))
            pOwner->selected = true;
    }
    void MakeDragStep(const QPointF& start, const QPointF& end, bool bResize, bool bHit)
    {
        auto pStep = std::make_shared<Reference::ShapeStep>();
        pStep->resize = bResize;
        pStep->from = start;
        pStep->to = end;
        for (const auto& pObject : m_editor.objects) {
            if (pObject->locked)
                continue;
            Reference::ShapeStep::Change change{pObject, pObject->shape, pObject->shape, {}};
            if (bResize) {
                const int nHandle = pObject->shape.FindHandle(start, m_editor.tolerance);
                if (nHandle < 0)
                    continue;
                const QPointF grip = start - pObject->shape.Handles()[std::size_t(nHandle)];
                change.after.MoveHandle(nHandle, end - grip);
            } else if (bHit && pObject->selected) {
                change.offset = start - pObject->shape.Box().topLeft();
                change.after.MoveTopLeftTo(end - change.offset);
            } else {
                continue;
            }
            pStep->changes.push_back(change);
            if (bResize)
                break;
        }
        if (pStep->changes.empty())
            return;
        m_editor.Make(pStep);
        m_pFresh = pStep;
    }

    void ControlClick()
    {
        m_strStep = QStringLiteral("ctrl-click");
        const QPoint pixel = ClearPixel();
        QWindow* pWindow = m_f.Window();
        const QPoint pos = m_f.view->mapTo(m_f.view->window(), pixel);
        QTest::mouseClick(pWindow, Qt::LeftButton, Qt::ControlModifier, pos);
        QTest::keyRelease(pWindow, Qt::Key_Control);
        m_editor.Press(ImageAt(pixel), true);
    }

    void Delete()
    {
        m_strStep = QStringLiteral("delete");
        SendKey(Qt::Key_Delete, Qt::NoModifier);
        auto pStep = std::make_shared<Reference::DeleteStep>();
        for (const auto& pObject : m_editor.objects)
            if (pObject->selected && !pObject->locked)
                pStep->objects.push_back(pObject);
        if (!pStep->objects.empty())
            m_editor.Make(pStep);
    }

    void Zoom()
    {
        m_strStep = QStringLiteral("zoom");
        const double dblSize = m_f.view->GetSizePixel();
        const bool bIn = dblSize < 0.5 || (dblSize < 12 && Pick(2) == 0);
        const QPoint pixel = RandomPixel();
        QWheelEvent wheel(pixel, m_f.view->mapToGlobal(pixel), QPoint(), QPoint(0, bIn ? 240 : -240),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_f.view, &wheel);
        if (Pick(3) == 0) {
            m_f.tool.SetViewMode(EImageView2DMode_Panning);
            PressAt(pixel);
            MoveTo(pixel + QPoint(Pick(41) - 20, Pick(41) - 20));
            ReleaseAt(pixel);
            m_f.tool.SetViewMode(EImageView2DMode_Selecting);
        }
        if (Pick(4) == 0)
            m_f.view->slot_ZoomFit();
        TakeZoomOver();
    }

    virtual void Rotate()
    {
        m_strStep = QStringLiteral("rotate");
        const unsigned int nOld = m_f.view->GetImageUID();
        Pick(2) == 0 ? m_f.ctrl->RotateLeft() : m_f.ctrl->RotateRight();
        m_editor.Make(std::make_shared<Reference::ImageStep>(nOld, m_f.view->GetImageUID()));
        TakeZoomOver();
    }
    void TurnPage()
    {
        m_strStep = QStringLiteral("page");
        const int nCount = int(m_editor.pages.size());
        const int nTo = Pick(nCount);
        switch (Pick(3)) {
        case 0:
            m_f.ctrl->slot_Next();
            m_editor.Show(std::min(m_editor.page + 1, nCount - 1));
            break;
        case 1:
            m_f.ctrl->slot_Previous();
            m_editor.Show(std::max(m_editor.page - 1, 0));
            break;
        default:
            m_f.ctrl->slot_SelectImage(nTo);
            m_editor.Show(nTo);
        }
        TakeZoomOver();
    }
    virtual void Load()
    {
        m_strStep = QStringLiteral("load");
        const QString strFile = m_files[Pick(m_files.size())];
        if (m_editor.pages.size() < 4 && Pick(2) == 0) {
            m_f.ctrl->AddImage(strFile);
        } else {
            m_f.ctrl->LoadFile(strFile);
            m_editor.objects.clear();
        }
        TakePagesOver();
        TakeZoomOver();
    }

    std::vector<unsigned int> Pages() const
    {
        std::vector<unsigned int> vctPages;
        for (int i = 0; i < m_f.images.GetImageCount(); ++i)
            vctPages.push_back(m_f.images.GetImage(i)->GetUID());
        return vctPages;
    }
    void TakePagesOver()
    {
        m_editor.pages = Pages();
        m_editor.page = int(m_editor.pages.size()) == 1 ? 0 : int(m_editor.pages.size()) - 1;
    }
    void TakeZoomOver()
    {
        m_editor.tolerance =
            10.0 * m_f.images.GetCurrentImage()->GetWidth() / m_f.view->GetViewPort().width();
    }
    void TakeShapesOver()
    {
        const auto vctObjects = m_f.geometry.GetObjects();
        for (std::size_t i = 0; i < vctObjects.size(); ++i) {
            m_editor.objects[i]->shape = ShapeOf(vctObjects[i]);
            m_real[vctObjects[i]->GetUID()] = vctObjects[i];
        }
        // A step may also have changed what is not among the finished objects at present.
        const auto takeOver = [this](Reference::ShapeStep& step) {
            for (auto& change : step.changes) {
                const Shape shape = ShapeOf(m_real.at(change.object->uid));
                if (IsClose(shape, change.object->shape))
                    change.object->shape = shape;
                change.after = change.object->shape;
            }
        };
        if (const auto pFresh = std::exchange(m_pFresh, nullptr))
            takeOver(*pFresh);
        if (!m_editor.undo.empty())
            if (const auto pLast = std::dynamic_pointer_cast<Reference::ShapeStep>(m_editor.undo.back()))
                if (std::exchange(pLast->fresh, false))
                    takeOver(*pLast);
        TakeZoomOver();
    }

    std::mt19937 m_random;
    QStringList m_files;
    EditFixture m_f;
    Reference::Editor m_editor;
    std::shared_ptr<Reference::ShapeStep> m_pFresh;
    std::map<unsigned int, EditFixture::ObjectPtr> m_real; ///< every object that there has been
    QString m_strStep;
    bool m_bRounds = true; ///< the step before worked shapes out, so that the last digits may differ
};
} // namespace UndoDriver
