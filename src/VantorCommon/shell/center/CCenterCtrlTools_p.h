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

/// Indices in CCenterCtrlTools of the tools that have slots of their own.
enum ECenterTool { ECenterTool_Median, ECenterTool_Sobel, ECenterTool_OCR };

/// The processing tools of the centre: a list of rows, each with its title and a maker of its triple. The
/// first opening of a tool makes its triple, and so does the first after its dialog was destroyed. GUI
/// thread.
class CCenterCtrlTools
{
public:
    /// Receives the title and the controller of each new triple.
    using Made = std::function<void(const QString& strTool, CImage2DProcessBaseCtrl& ctrl)>;

    /// The tools of the library.
    explicit CCenterCtrlTools(Made made);
    ~CCenterCtrlTools();

    /// Appends a tool.
    /// @return its index, or -1 as CCenterCtrl::RegisterOperation
    int Add(const SProcessOperation& operation);
    /// The titles, by index.
    QStringList Titles() const;
    /// Shows a tool, modeless.
    /// @param pParent  owns the dialog; may be null
    /// @return its controller; null for an index out of range
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
