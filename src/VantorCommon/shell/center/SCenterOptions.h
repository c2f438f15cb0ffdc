// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

/// Options with which a host changes the library's behaviour. Every member is off at first, and a member that
/// is off changes nothing. CCenterCtrl::SetOptions passes them to all viewers; they apply from the next
/// operation on. A value without resources; any thread may copy it.
struct SCenterOptions {
    /// A file that cannot be loaded leaves images and annotations of the viewer as they are. Off: the viewer
    /// is empty then.
    bool bKeepOnFailedLoad = false;
    /// Chooses the reader of a file by its first bytes: a document is what has "%PDF-" among its first 1024,
    /// everything else is an image. A file whose bytes cannot be read goes by its path. Off: by the path
    /// alone, see CImageView2DCtrl::LoadFile.
    bool bReaderByContent = false;
    /// After a capture of the screen the main window comes back as it was before: maximised, full screen or
    /// neither. Off: maximised.
    bool bRestoreAfterCapture = false;
    /// The dialog that asks where to save an image begins in the image's folder, with its name and format,
    /// and has a filter for each format, whose suffix a name without one gets. Off: no name, the folder of
    /// the process, one filter for all, and the suffix "bmp".
    bool bProposeSaveName = false;
    /// The tool panels have the buttons of the optional kinds of ShapeKinds, too: arrows and texts, and what
    /// a host registers as optional. Off: those of the six modes.
    bool bMoreShapes = false;
    /// Annotations that have a pen or a brush are painted by them, and the property panel has their colour,
    /// width and fill. Off: every annotation is green or, selected, red.
    bool bOwnColors = false;
    /// Each image or page of a viewer's list has its own annotations: paging, adding and closing images keep
    /// them with it, and undoing a step of another page shows that page first. Off: a viewer has one set.
    bool bAnnotationsPerImage = false;
    /// Annotations stay when their image is turned by a quarter, flipped or cut, at their places on the new
    /// image, and when it is changed into one of equal size; undo brings both back exactly. Off: they go.
    bool bCarryAnnotations = false;
    /// Every step on annotations that are not saved goes into a file in the user's folder of states, which
    /// outlives the program however it ends; AnnotationRecovery finds it. Off: nothing is written.
    bool bAnnotationJournal = false;
    /// Keys edit the annotations of the 2D view that has the focus. Arrow keys move what is selected by a
    /// pixel of the image, with Shift by ten, those that follow each other within a second as one step;
    /// Ctrl+A selects everything, Ctrl+D duplicates; copying takes the selected annotations along, pasting
    /// prefers them to the picture. Shift draws squares, circles and lines at steps of 45 degrees. Enter or a
    /// double click closes a polygon, Backspace takes its last corner back, Escape gives it up. Off: none of
    /// this; Backspace then deletes what is selected, and Escape leaves the corners until the next press.
    bool bEditKeys = false;
    /// Opening, saving and rotating images, the runs of the processing tools and the reading of text are jobs
    /// (CJobs) beside the GUI thread: what asks for them returns at once, and their signals come when they
    /// are done. Files are shown in the order in which they were asked for. A newer run of a tool, or a newer
    /// opening that replaces the list, cancels the older one. What comes of an image that is not the current
    /// one any more is dropped with a word of signal_Failed. A save is carried out also when the program
    /// ends. Registered operations are called on a thread of a pool. Off: everything is done when the call
    /// returns.
    bool bBackground = false;
};
