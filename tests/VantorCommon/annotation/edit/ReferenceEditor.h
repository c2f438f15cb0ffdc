// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPointF>
#include <QRectF>
#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <vector>

/// A plain second model of the editing of one view, written without a look at the sources: shapes are lists
/// of points, a step keeps what it changed. The test drives it beside the real thing and compares.
namespace Reference
{

enum class Kind { Rectangle, Ellipse, Line, Polygon };

/// A rectangle or an ellipse has two points, its raw corner and the opposite one.
struct Shape {
    Kind kind = Kind::Rectangle;
    std::vector<QPointF> points;

    bool IsBox() const { return kind == Kind::Rectangle || kind == Kind::Ellipse; }
    bool operator==(const Shape& other) const
    {
        const auto same = [](const QPointF& a, const QPointF& b) { return a.x() == b.x() && a.y() == b.y(); };
        return kind == other.kind &&
               std::equal(points.begin(), points.end(), other.points.begin(), other.points.end(), same);
    }
    QRectF Box() const
    {
        double l = points[0].x(), r = l, t = points[0].y(), b = t;
        for (const QPointF& p : points) {
            l = std::min(l, p.x()), r = std::max(r, p.x());
            t = std::min(t, p.y()), b = std::max(b, p.y());
        }
        return QRectF(l, t, r - l, b - t);
    }
    bool Hit(const QPointF& p) const
    {
        const QRectF box = Box();
        return box.width() > 0 && box.height() > 0 && p.x() >= box.left() && p.x() <= box.right() &&
               p.y() >= box.top() && p.y() <= box.bottom();
    }
    std::vector<QPointF> Handles() const
    {
        if (!IsBox())
            return points;
        const QPointF a = points[0], b = points[1];
        return {a, QPointF(b.x(), a.y()), b, QPointF(a.x(), b.y())};
    }
    /// The index of the first handle within the tolerance, or -1.
    int FindHandle(const QPointF& p, double tolerance) const
    {
        const auto handles = Handles();
        for (std::size_t i = 0; i < handles.size(); ++i)
            if (std::hypot(handles[i].x() - p.x(), handles[i].y() - p.y()) <= tolerance)
                return int(i);
        return -1;
    }
    void MoveHandle(int i, const QPointF& to)
    {
        if (!IsBox()) {
            points[std::size_t(i)] = to;
            return;
        }
        points[i == 0 || i == 3 ? 0 : 1].setX(to.x());
        points[i == 0 || i == 1 ? 0 : 1].setY(to.y());
    }
    void MoveTopLeftTo(const QPointF& to)
    {
        const QPointF delta = to - Box().topLeft();
        for (QPointF& p : points)
            p += delta;
    }
};

struct Object {
    unsigned int uid = 0;
    Shape shape;
    bool selected = false;
};
using ObjectPtr = std::shared_ptr<Object>;

struct Editor;

struct Step {
    virtual ~Step() = default;
    virtual void Do(Editor& editor) = 0;
    virtual void Undo(Editor& editor) = 0;
};
using StepPtr = std::shared_ptr<Step>;

struct Editor {
    std::vector<ObjectPtr> objects; // newest first
    std::vector<unsigned int> pages;
    int page = 0;
    double tolerance = 0;
    std::vector<StepPtr> undo, redo;

    bool Has(const ObjectPtr& p) const { return std::count(objects.begin(), objects.end(), p) > 0; }
    void UnselectAll()
    {
        for (const ObjectPtr& p : objects)
            p->selected = false;
    }
    void AddAlone(const ObjectPtr& p)
    {
        UnselectAll();
        if (Has(p))
            return;
        objects.insert(objects.begin(), p);
        p->selected = true;
    }
    void Remove(const ObjectPtr& p)
    {
        objects.erase(std::remove(objects.begin(), objects.end(), p), objects.end());
    }
    bool TurnTo(unsigned int image)
    {
        if (pages[std::size_t(page)] == image)
            return true;
        const auto it = std::find(pages.begin(), pages.end(), image);
        if (it == pages.end())
            return false;
        page = int(it - pages.begin());
        return true;
    }
    void Make(const StepPtr& step)
    {
        undo.push_back(step);
        step->Do(*this);
    }
    static void Shift(std::vector<StepPtr>& from, std::vector<StepPtr>& to)
    {
        to.push_back(from.back());
        from.pop_back();
    }
    void UndoLast()
    {
        if (undo.empty())
            return;
        Shift(undo, redo);
        redo.back()->Undo(*this);
    }
    void RedoLast()
    {
        if (redo.empty())
            return;
        Shift(redo, undo);
        undo.back()->Do(*this);
    }

    /// The resize flag: whether the mouse is on a handle of any object.
    bool OnHandle(const QPointF& p) const
    {
        return std::any_of(objects.begin(), objects.end(),
                           [&](const ObjectPtr& o) { return o->shape.FindHandle(p, tolerance) >= 0; });
    }
    /// @return whether a selected object was hit
    bool Press(const QPointF& p, bool add)
    {
        const auto hit = [&](const ObjectPtr& o) { return o->shape.Hit(p); };
        const auto hitSelected = [&](const ObjectPtr& o) { return o->selected && hit(o); };
        const auto anyHitSelected = [&] { return std::any_of(objects.begin(), objects.end(), hitSelected); };
        if (add) {
            for (const ObjectPtr& o : objects)
                o->selected = o->selected || hit(o);
        } else if (!anyHitSelected()) {
            UnselectAll();
            const auto it = std::find_if(objects.begin(), objects.end(), hit);
            if (it != objects.end())
                (*it)->selected = true;
        }
        return anyHitSelected();
    }
    void Band(const QPointF& a, const QPointF& b)
    {
        const QRectF band = QRectF(a, b).normalized();
        for (const ObjectPtr& o : objects) {
            const QRectF box = o->shape.Box();
            for (const QPointF& c : {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()})
                if (c.x() >= band.left() && c.x() <= band.right() && c.y() >= band.top() &&
                    c.y() <= band.bottom())
                    o->selected = true;
        }
    }
    /// How near any decision about the point is to going the other way, in image pixels: the edges of boxes,
    /// and the reach of handles.
    double Margin(const QPointF& p) const
    {
        double margin = std::numeric_limits<double>::max();
        for (const ObjectPtr& o : objects) {
            const QRectF box = o->shape.Box();
            for (double d :
                 {p.x() - box.left(), p.x() - box.right(), p.y() - box.top(), p.y() - box.bottom()})
                margin = std::min(margin, std::abs(d));
            for (const QPointF& h : o->shape.Handles())
                margin = std::min(margin, std::abs(std::hypot(h.x() - p.x(), h.y() - p.y()) - tolerance));
        }
        return margin;
    }
};

struct AddStep : Step {
    explicit AddStep(ObjectPtr o) : object(std::move(o)) {}
    void Do(Editor& editor) override { editor.AddAlone(object); }
    void Undo(Editor& editor) override { editor.Remove(object); }
    ObjectPtr object;
};

struct DeleteStep : Step {
    void Do(Editor& editor) override
    {
        for (const ObjectPtr& o : objects)
            editor.Remove(o);
    }
    void Undo(Editor& editor) override
    {
        for (auto it = objects.rbegin(); it != objects.rend(); ++it)
            editor.AddAlone(*it);
    }
    std::vector<ObjectPtr> objects;
};

/// Moves and resizes. The shapes decide while they are what they were; otherwise the points do, anew.
struct ShapeStep : Step {
    struct Change {
        ObjectPtr object;
        Shape before, after;
        QPointF offset; ///< of a move
    };
    void Do(Editor& editor) override
    {
        for (Change& c : changes) {
            if (!(c.object->shape == c.before)) {
                c.before = c.after = c.object->shape;
                if (resize) {
                    const int i = c.after.FindHandle(from, editor.tolerance);
                    if (i >= 0)
                        c.after.MoveHandle(i, to);
                } else {
                    c.after.MoveTopLeftTo(to - c.offset);
                }
                fresh = true;
            }
            c.object->shape = c.after;
        }
    }
    void Undo(Editor&) override
    {
        for (auto it = changes.rbegin(); it != changes.rend(); ++it) {
            consistent = consistent && it->object->shape == it->after;
            it->object->shape = it->before;
        }
    }
    std::vector<Change> changes;
    bool resize = false;
    QPointF from, to;
    bool fresh = false;     ///< the shapes after it were worked out here and want to be taken over
    bool consistent = true; ///< no undo has found a shape that the step had not left
};

struct ImageStep : Step {
    ImageStep(unsigned int o, unsigned int n) : before(o), after(n) {}
    void Do(Editor& editor) override
    {
        if (done || !editor.TurnTo(before))
            return;
        done = true;
        dropped.clear();
        for (const ObjectPtr& o : editor.objects)
            dropped.emplace_back(o, o->selected);
        editor.objects.clear();
        editor.pages[std::size_t(editor.page)] = after;
    }
    void Undo(Editor& editor) override
    {
        if (!done || !editor.TurnTo(after))
            return;
        done = false;
        editor.pages[std::size_t(editor.page)] = before;
        editor.objects.clear();
        for (const auto& [o, selected] : dropped) {
            o->selected = selected;
            editor.objects.push_back(o);
        }
    }
    unsigned int before, after;
    bool done = false;
    std::vector<std::pair<ObjectPtr, bool>> dropped;
};

} // namespace Reference
