// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>
#include <string>

class CImage2DProcessBaseDlg;
class CImageViewer;
class CImageViewerCtrl;
struct SCenterOptions;

namespace Vantor::Algorithms
{
class CImage;
}

namespace Vantor::Geometry
{
class CGeometry;
}

/// The controller of a processing tool: bound to one viewer of the centre, the source, it keeps the dialog's
/// list of regions in step with the shapes of that viewer and times the runs.
///
/// A run of a derived tool is: TakeSource, CopyOf, StartProcess, a call of the core library, ShowResult, or
/// Fail where that call gave no result; RunOn does all of it. A run that cannot be done ends early;
/// signal_Failed and GetFailureReason tell why. Dialog and viewer are not owned; the binding is dropped when
/// the viewer dies. GUI thread only; a run blocks it, unless SCenterOptions::bBackground is on.
class VANTORCOMMON_EXPORT CImage2DProcessBaseCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// Images are shared with the viewers and their undo steps.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Binds the tool to the viewer that the dialog shows; the dialog may be null.
    explicit CImage2DProcessBaseCtrl(CImage2DProcessBaseDlg* pDlg);
    ~CImage2DProcessBaseCtrl() override;

    /// @{
    /// A run is undone by its viewer; nothing here, false.
    bool Undo() override;
    bool Redo() override;
    /// @}

    /// They hold from the next run on; without bBackground, runs that have not ended are cancelled.
    void SetOptions(const SCenterOptions& sOptions);

    /// Binds the tool to the registered viewer with that window title. Without one the tool is unbound, and
    /// the dialog's list of regions stays as it was.
    void ChangeSourceImageView(const QString& strTitle);
    /// ChangeSourceImageView, with the dialog's chooser following, and the selected shape of that viewer, of
    /// several the one listed first, as the region; without one no region, which is the whole image.
    void WorkOn(const QString& strTitle);
    /// @{
    /// The source; null while the tool is unbound.
    CImageViewerCtrl* GetSourceViewCtrl() const;
    CImageViewer* GetSourceView() const;
    /// @}

    /// Starts the clock of a run and announces it.
    void StartProcess();
    /// Announces the end; shows and logs the time since StartProcess, nothing of that without a dialog.
    void EndProcess();

    /// Why the last run gave no result or only an unprocessed one, in English; empty after a good one.
    QString GetFailureReason() const { return m_strFailureReason; }

Q_SIGNALS:
    /// The work itself begins, during which the thread is busy (or a job, see SCenterOptions::bBackground).
    void signal_Started();
    /// It is over, done or failed; once for each signal_Started.
    void signal_Ended();
    /// The run gave no result or only an unprocessed one, and why; after signal_Ended if it had started.
    void signal_Failed(const QString& strReason);

public Q_SLOTS:
    /// The user has chosen another viewer in the dialog: ChangeSourceImageView.
    void slot_ChangeSourceImageView(const QString& strTitle);
    /// @{
    /// Lists a new shape of the source at the end of the regions, or takes the first one of a deleted shape's
    /// name out of them; what is a region, ShapeKinds tells.
    /// Deliberate: neither the viewer nor the image is compared, the signal comes from the source itself.
    void slot_AddDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                          QString strName);
    void slot_DeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                             QString strName);
    /// @}
    /// Deliberate: nothing. A region keeps the name under which it was listed.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);

protected:
    /// What a run works on.
    struct SSource {
        ImagePtr pImage;                                      ///< null: there is nothing to run on
        std::shared_ptr<Vantor::Geometry::CGeometry> pRegion; ///< null: the whole image
    };

    /// The current image of the source viewer, and the shape that is chosen by name; of several with that
    /// name the last one in the viewer's list.
    [[nodiscard]] SSource TakeSource();
    /// A copy to work on, for images that a viewer holds never change. Null when there is no image or not
    /// enough memory.
    [[nodiscard]] ImagePtr CopyOf(const SSource& source);
    /// Ends the run (EndProcess) and makes the image the current one of the source viewer, an undoable step
    /// that drops the annotations. The viewer keeps the image: it must not be changed any more.
    void ShowResult(const ImagePtr& pImage);
    /// Changes an image in a region, null being the whole image.
    /// @return why it could not, a sentence in English; empty for a success
    using Change =
        std::function<QString(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion)>;
    /// A run as most tools have it: the source is taken and copied, the copy changed, and shown as the result
    /// or the reason announced. An exception of the change is a failure. With SCenterOptions::bBackground the
    /// change is called on a thread of a pool and must not touch what belongs to the GUI thread; it may use
    /// Vantor::CProgress::OfThread().
    /// @param bShowFailed  whether the copy is shown also after a failure
    void RunOn(const Change& change, bool bShowFailed = false);
    /// Whether runs are jobs.
    bool IsBackground() const { return m_bBackground; }
    /// The work of a run that is a job, on a thread of a pool; what it returns is called on the GUI thread
    /// and ends the run. The source has a region of its own.
    using JobWork = std::function<std::function<void()>(const SSource& source)>;
    /// Starts a run that is a job, with the dialog's title, in place of one that has not ended.
    /// @param nCopies  of the image, for which it needs memory
    void StartJob(const SSource& source, int nCopies, const JobWork& work);
    /// Ends the run, if it has started, and announces that it failed and why. Called when a call of the core
    /// library did not give 0, with its reason, or with a sentence of the tool's own.
    /// @param strReason  a sentence in English
    void Fail(const QString& strReason);
    /// For tools that were written for version 1.0: calls Fail when the result is not 0.
    /// @return whether it is 0
    [[deprecated("Ask whether the result is 0, and call Fail.")]] bool
    Succeeded(int nResult, const std::string& strReason);

private:
    /// What became of a copy.
    struct SOutcome {
        ImagePtr pImage;   ///< null: there was no memory
        QString strReason; ///< of a failure
    };

    static SOutcome ChangedCopy(const SSource& source, const Change& change);
    void ShowOutcome(const SOutcome& outcome, CImageViewerCtrl* pViewer, const ImagePtr& pSource,
                     bool bShowFailed);
    void End();
    void ConnectSource(bool bConnect);
    void FillSourceROI();
    std::shared_ptr<Vantor::Geometry::CGeometry> FindRegion() const;

    QPointer<CImage2DProcessBaseDlg> m_pDlg;
    QPointer<CImageViewerCtrl> m_pSourceViewCtrl;
    QPointer<CImageViewer> m_pSourceView;
    QElapsedTimer m_timer;
    int m_nRunning = 0; ///< runs that have started and not ended
    bool m_bBackground = false;
    QString m_strFailureReason;
};
