// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QPointer>
#include <functional>
#include <memory>

class CCommand;
class CImageView2D;
class CImageView2DCtrl;
class CImageView2DGeometryModel;
class CImageView2DDrawableText;
class CImageView2DToolModel;

/// The objects on which the gestures of one 2D controller work. Models and view may be destroyed first.
struct SEditContext {
    CImageView2DCtrl* pCtrl = nullptr;
    QPointer<CImageView2D> pView;
    QPointer<CImageView2DGeometryModel> pModel;
    QPointer<CImageView2DToolModel> pToolModel;
    /// Records a step and carries it out. @return the recorded step, which the history keeps
    std::function<CCommand*(std::unique_ptr<CCommand>)> execute;
    /// Lets the user write a new text, and adds it as a step.
    std::function<void(std::shared_ptr<CImageView2DDrawableText>)> write;

    /// Whether view, drawing layer and geometry model exist.
    bool IsComplete() const;
    /// Empties the drawing list and what the layer paints.
    void ClearDrawing() const;
};
