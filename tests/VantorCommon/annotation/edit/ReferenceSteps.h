// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "ReferenceEditor.h"

/// The steps of the plain second model.
namespace Reference
{

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

/// Where the points of an image are after a change of it.
struct PlaneMap {
    bool swap = false;
    double signX = 1, signY = 1, moveX = 0, moveY = 0;

    bool IsIdentity() const { return !swap && signX > 0 && signY > 0 && moveX == 0 && moveY == 0; }
    Shape There(Shape shape) const
    {
        for (QPointF& p : shape.points) {
            const double x = swap ? p.y() : p.x(), y = swap ? p.x() : p.y();
            p = QPointF(signX * x + moveX, signY * y + moveY);
        }
        return shape;
    }
    Shape Back(Shape shape) const
    {
        for (QPointF& p : shape.points) {
            const double x = signX * (p.x() - moveX), y = signY * (p.y() - moveY);
            p = swap ? QPointF(y, x) : QPointF(x, y);
        }
        return shape;
    }
};

struct ImageStep : Step {
    ImageStep(unsigned int o, unsigned int n, std::shared_ptr<PlaneMap> m = nullptr)
        : before(o), after(n), map(std::move(m))
    {
    }
    void Do(Editor& editor) override
    {
        if (done || !editor.TurnTo(before))
            return;
        done = true;
        editor.pages[std::size_t(editor.page)] = after;
        if (map)
            return Carry(editor);
        dropped.clear();
        for (const ObjectPtr& o : editor.objects)
            dropped.emplace_back(o, o->selected);
        editor.objects.clear();
    }
    void Undo(Editor& editor) override
    {
        if (!done || !editor.TurnTo(after))
            return;
        done = false;
        editor.pages[std::size_t(editor.page)] = before;
        if (map)
            return CarryBack(editor);
        editor.objects.clear();
        for (const auto& [o, selected] : dropped) {
            o->selected = selected;
            editor.objects.push_back(o);
        }
    }
    void Carry(Editor& editor)
    {
        order = editor.objects;
        for (const ObjectPtr& o : editor.objects) {
            carried[o] = {o->shape, map->There(o->shape)};
            o->shape = carried[o].second;
        }
    }
    void CarryBack(Editor& editor)
    {
        if (map->IsIdentity())
            return;
        for (const ObjectPtr& o : editor.objects) {
            const auto it = carried.find(o);
            const bool same = it != carried.end() && o->shape == it->second.second;
            o->shape = same ? it->second.first : map->Back(o->shape);
        }
        editor.SetOrder(order);
    }
    unsigned int before, after;
    std::shared_ptr<PlaneMap> map; ///< null: the objects go
    bool done = false;
    std::vector<std::pair<ObjectPtr, bool>> dropped;
    std::map<ObjectPtr, std::pair<Shape, Shape>> carried;
    Objects order;
};

/// Gives objects a shape, a name or a lock, whatever they have, and back what they had.
struct ValueStep : Step {
    enum class What { Shape, Name, Lock };
    struct Change {
        ObjectPtr object;
        Said before, after;
    };
    explicit ValueStep(What w) : what(w) {}
    void Do(Editor&) override
    {
        for (Change& c : changes) {
            c.before = SaidOf({c.object}).front();
            Set(*c.object, c.after);
        }
    }
    void Undo(Editor&) override
    {
        for (const Change& c : changes)
            Set(*c.object, c.before);
    }
    void Set(Object& object, const Said& said) const
    {
        if (what == What::Shape)
            object.shape = said.shape;
        else if (what == What::Name)
            object.name = said.name;
        else
            object.locked = said.locked;
    }
    What what;
    std::vector<Change> changes;
};

struct PasteStep : Step {
    explicit PasteStep(Objects o) : objects(std::move(o)) {}
    void Do(Editor& editor) override
    {
        editor.UnselectAll();
        for (auto it = objects.rbegin(); it != objects.rend(); ++it) {
            (*it)->selected = true;
            if (!editor.Has(*it))
                editor.objects.insert(editor.objects.begin(), *it);
        }
    }
    void Undo(Editor& editor) override
    {
        for (const ObjectPtr& o : objects)
            editor.Remove(o);
    }
    Objects objects;
};

struct OrderStep : Step {
    explicit OrderStep(Objects a) : after(std::move(a)) {}
    void Do(Editor& editor) override
    {
        before = editor.objects;
        editor.SetOrder(after);
    }
    void Undo(Editor& editor) override { editor.SetOrder(before); }
    Objects before, after;
};

/// A document in place of all objects of a file. What has been closed meanwhile stays as it was then.
struct ApplyStep : Step {
    struct State {
        std::map<int, Objects> open; ///< by PageId::id
        Document closed;
    };
    ApplyStep(Editor& editor, QString f, Document document) : file(std::move(f))
    {
        for (const PageId& page : editor.ids) {
            if (page.file != file)
                continue;
            inFile[page.id] = page.inFile;
            Objects& objects = after.open[page.id];
            for (const Said& said : document[page.inFile]) {
                objects.push_back(std::make_shared<Object>());
                objects.back()->shape = said.shape;
                objects.back()->name = said.name;
                objects.back()->locked = said.locked;
            }
            document.erase(page.inFile);
        }
        after.closed = std::move(document);
    }
    void Do(Editor& editor) override
    {
        before = State{{}, editor.closed[file]};
        for (std::size_t i = 0; i < editor.ids.size(); ++i)
            if (editor.ids[i].file == file) {
                before.open[editor.ids[i].id] = editor.ObjectsOf(int(i));
                inFile[editor.ids[i].id] = editor.ids[i].inFile;
            }
        Put(editor, after);
    }
    void Undo(Editor& editor) override { Put(editor, before); }
    void Put(Editor& editor, const State& state) const
    {
        Document closed = state.closed;
        for (const auto& [id, objects] : state.open) {
            const int wanted = id;
            const auto it = std::find_if(editor.ids.begin(), editor.ids.end(),
                                         [wanted](const PageId& p) { return p.id == wanted; });
            if (it != editor.ids.end())
                editor.ObjectsOf(int(it - editor.ids.begin())) = objects;
            else
                closed[inFile.at(id)] = editor.closed[file][inFile.at(id)];
        }
        editor.closed[file] = closed;
    }
    QString file;
    State before, after;
    std::map<int, int> inFile; ///< by PageId::id
};

} // namespace Reference
