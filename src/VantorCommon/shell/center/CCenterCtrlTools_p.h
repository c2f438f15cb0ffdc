// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/process/operation/SProcessOperation.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QPointer>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

/// Places of the tools with slots of their own in CCenterCtrlTools.
enum ECenterTool { ECenterTool_Median, ECenterTool_Sobel, ECenterTool_OCR };

/// The processing tools of the centre: one list of rows, of which each knows its title and how its triple is
/// made. A triple is made when its tool is opened first, or opened again after its dialog died. GUI thread.
class CCenterCtrlTools
{
public:
    /// Called with the title and the controller of a triple that was made just now.
    using Made = std::function<void(const QString& strTool, CImage2DProcessBaseCtrl& ctrl)>;

    /// The tools of the library.
    explicit CCenterCtrlTools(Made made);
    ~CCenterCtrlTools();

    /// Appends a tool.
    /// @return its index, or -1 as CCenterCtrl::RegisterOperation
    int Add(const SProcessOperation& operation);
    /// By index.
    QStringList Titles() const;
    /// Shows a tool, modeless.
    /// @param pParent  owns the dialog; may be null
    /// @return its controller; null for an index that is none
    CImage2DProcessBaseCtrl* Open(int nTool, QWidget* pParent);

private:
    struct STriple {
        ~STriple();

        std::unique_ptr<CBaseModel> pModel;
        QPointer<CImage2DProcessBaseDlg> pDlg;
        std::unique_ptr<CImage2DProcessBaseCtrl> pCtrl;
    };
    using TriplePtr = std::unique_ptr<STriple>;
    struct SRow {
        QString strTitle;
        std::function<TriplePtr(QWidget* pParent)> make;
        TriplePtr pTriple;
    };

    template <class Model, class Dlg, class Ctrl> void AddOwn(const char* pTitle);
    static TriplePtr MakeTriple(const SProcessOperation& operation, QWidget* pParent);

    Made m_made;
    std::vector<SRow> m_vctRows;
};
