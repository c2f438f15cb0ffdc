// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QObject>
#include <map>
#include <memory>
#include <set>
#include <unordered_set>

class CJob;

namespace Vantor::Algorithms
{
class CImage;
}

/// Has the deferred images of a 2D controller's list rendered before anybody waits for them: the current one,
/// those beside it, then the others, the nearest first. Each is a job; those for the images that are not
/// current are at most two in the whole process, and a controller has at most three. When the pixels have
/// come, the model tells it, and the controller tells why a page could not be rendered, and again whenever
/// that page becomes current. GUI thread only.
class CImageView2DCtrlPages
{
public:
    explicit CImageView2DCtrlPages(const SImageView2DCtrlContext& context);
    ~CImageView2DCtrlPages();
    CImageView2DCtrlPages(const CImageView2DCtrlPages&) = delete;
    CImageView2DCtrlPages& operator=(const CImageView2DCtrlPages&) = delete;

private:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;
    struct SRunning {
        std::shared_ptr<CJob> pJob;
        bool bAhead = false;
        qint64 nBytes = 0; ///< that its pixels will take
    };

    void FollowList();
    void FollowCurrent();
    void Want(int nIndex);
    void Continue();
    int NearestWanted() const;
    void Render(int nIndex, bool bAhead);
    void End(unsigned int nUID);
    void Tell(const ImagePtr& pImage);
    void TellWhy(const Vantor::Algorithms::CImage& image);
    static void ContinueAll();
    static qint64 Coming();

    const SImageView2DCtrlContext& m_context;
    std::set<int> m_wanted;                      ///< indices in the list of images without pixels
    std::map<unsigned int, SRunning> m_running;  ///< by the identifier of the image
    std::unordered_set<unsigned int> m_rendered; ///< identifiers of the images that have been once
    unsigned int m_nShown = 0;                   ///< identifier of the current image, if it is deferred
    bool m_bTold = false;                        ///< why that one has no drawing, since it is current
    QObject m_receiver; ///< of jobs and signals; not the controller, whose jobs somebody may wait for
};
