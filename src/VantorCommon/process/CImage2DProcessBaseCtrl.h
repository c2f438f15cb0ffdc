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

/// The controller of a processing tool. Bound to one viewer of the centre, the source, it keeps the dialog's
/// list of regions equal to that viewer's shapes and times the runs.
///
/// A run of a derived tool is: TakeSource, CopyOf, StartProcess, a call of the core library, then ShowResult,
/// or Fail if that call failed; RunOn does all of it. A run that is impossible ends early; signal_Failed and
/// GetFailureReason report the reason. Dialog and viewer are not owned; the binding ends with the viewer. GUI
/// thread only; a run blocks it, unless SCenterOptions::bBackground is on.
class VANTORCOMMON_EXPORT CImage2DProcessBaseCtrl : public CBaseCtrl
{
    Q_OBJECT

public:
    /// The tool shares images with the viewers and their undo steps.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Binds the tool to the viewer that the dialog shows; the dialog may be null.
    explicit CImage2DProcessBaseCtrl(CImage2DProcessBaseDlg* pDlg);
    ~CImage2DProcessBaseCtrl() override;

    /// @{
    /// Does nothing and returns false, because the viewer undoes a run.
    bool Undo() override;
    bool Redo() override;
    /// @}

    /// They apply from the next run on; without bBackground, runs that have not ended are cancelled.
    void SetOptions(const SCenterOptions& sOptions);

    /// Binds the tool to the registered viewer with that window title. Without one it unbinds the tool and
    /// does not change the dialog's list of regions.
    void ChangeSourceImageView(const QString& strTitle);
    /// Calls ChangeSourceImageView, shows the viewer in the dialog's chooser and chooses its selected shape,
    /// of several the first in the list, as the region; without one no region, which means the whole image.
    void WorkOn(const QString& strTitle);
    /// @{
    /// The source; null while the tool is unbound.
    CImageViewerCtrl* GetSourceViewCtrl() const;
    CImageViewer* GetSourceView() const;
    /// @}

    /// Starts the clock of a run and emits signal_Started.
    void StartProcess();
    /// Emits signal_Ended; with a dialog shows and logs the time since StartProcess.
    void EndProcess();

    /// Why the last run had no result or only an unprocessed one, in English; empty after a success.
    QString GetFailureReason() const { return m_strFailureReason; }

Q_SIGNALS:
    /// The work begins and keeps the thread busy, unless it is a job (SCenterOptions::bBackground).
    void signal_Started();
    /// The work has succeeded or failed; once for each signal_Started.
    void signal_Ended();
    /// The run had no result or only an unprocessed one, and why; after signal_Ended if it had started.
    void signal_Failed(const QString& strReason);

public Q_SLOTS:
    /// The user has chosen another viewer in the dialog: ChangeSourceImageView.
    void slot_ChangeSourceImageView(const QString& strTitle);
    /// @{
    /// Append a new shape of the source to the list of regions, or remove the first region with a deleted
    /// shape's name; ShapeKinds says which kinds are regions. Deliberate: compare neither viewer nor image,
    /// because only the source is connected.
    void slot_AddDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                          QString strName);
    void slot_DeleteDrawableObjectWithViewID(int nViewID, unsigned int nImageUID, unsigned int nGeometryUID,
                                             QString strName);
    /// @}
    /// Deliberate: does nothing. A region keeps the name under which it was listed.
    void slot_ChangeDrawableObjectProperty(unsigned int nUID);

protected:
    /// The input of a run.
    struct SSource {
        ImagePtr pImage;                                      ///< null: there is no image
        std::shared_ptr<Vantor::Geometry::CGeometry> pRegion; ///< null: the whole image
    };

    /// The current image of the source viewer, and the shape with the chosen name; of several with that name
    /// the last one in the viewer's list.
    [[nodiscard]] SSource TakeSource();
    /// A copy to work on, because images in a viewer never change. Null without an image or enough memory.
    [[nodiscard]] ImagePtr CopyOf(const SSource& source);
    /// Ends the run (EndProcess) and makes the image the current one of the source viewer, an undoable step
    /// that drops the annotations. The viewer keeps the image; do not change it afterwards.
    void ShowResult(const ImagePtr& pImage);
    /// Changes an image in a region; null means the whole image.
    /// @return the reason of a failure, a sentence in English; empty for a success
    using Change =
        std::function<QString(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion)>;
    /// The usual run: takes and copies the source, changes the copy, and shows it as the result or reports
    /// the failure. An exception of the change is a failure. With SCenterOptions::bBackground a thread of a
    /// pool calls the change, which must not touch what belongs to the GUI thread; it may use
    /// Vantor::CProgress::OfThread().
    /// With bShowFailed it shows the copy also after a failure.
    void RunOn(const Change& change, bool bShowFailed = false);
    /// Whether runs are jobs.
    bool IsBackground() const { return m_bBackground; }
    /// The work of a run that is a job, on a thread of a pool; what it returns is called on the GUI thread
    /// and ends the run. The source has a region of its own.
    using JobWork = std::function<std::function<void()>(const SSource& source)>;
    /// Starts a run that is a job, with the dialog's title, in place of one that has not ended.
    /// It needs memory for nCopies of the image.
    void StartJob(const SSource& source, int nCopies, const JobWork& work);
    /// Ends the run, if it has started, and emits signal_Failed. Call it when a call of the core library did
    /// not return 0, with its reason, or with a sentence of the tool's own.
    /// @param strReason  a sentence in English
    void Fail(const QString& strReason);
    /// For tools written for version 1.0: calls Fail when the result is not 0.
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
