// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/operation/SProcessParameter.h>

#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

namespace Vantor::Geometry
{
class CGeometry;
}

/// The values of an operation's parameters, in their order, each within its range and of its type.
using ProcessValues = std::vector<QVariant>;
/// Receives the progress, 0 to 1; the operation calls it as often as it likes. When a run in the background
/// is cancelled, it throws an exception of its own, which the operation lets pass.
using ProcessProgress = std::function<void(double dblDone)>;

/// A processing tool as a value: the title of its window, its parameters, and its work: one of apply and
/// find. CCenterCtrl::RegisterOperation makes a tool of it.
struct SProcessOperation {
    QString strTitle;                             ///< title of the window, and name of the tool
    std::vector<SProcessParameter> vctParameters; ///< from top to bottom
    /// Changes the image, which nobody else holds. A null region means the whole image; only pixels of the
    /// region should change. Runs on the GUI thread and blocks it; with SCenterOptions::bBackground on a
    /// thread of a pool. An exception counts as a failure.
    /// @return the reason of a failure, a sentence in English; empty for a success
    std::function<QString(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion,
                          const ProcessValues& vctValues, const ProcessProgress& progress)>
        apply;
    using Shapes = std::vector<std::shared_ptr<Vantor::Geometry::CGeometry>>; ///< in pixels of the image
    /// Finds shapes in an image that nobody changes, within a region; null means the whole image. They become
    /// annotations of the image, all of them as one step that can be undone, the first the topmost. Threads,
    /// failures and result as with apply.
    std::function<QString(const Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion,
                          const ProcessValues& vctValues, const ProcessProgress& progress, Shapes& vctFound)>
        find = {};
};
