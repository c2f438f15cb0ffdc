// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

/// Options with which a host changes the library's behaviour. Every member is off at first, and a member that
/// is off changes nothing. CCenterCtrl::SetOptions passes them to all viewers; they apply from the next
/// operation on. A value without resources; any thread may copy it.
struct SCenterOptions {
    /// A file that cannot be loaded changes no image or annotation of the viewer. Off: it empties the viewer.
    bool bKeepOnFailedLoad = false;
    /// The first bytes of a file choose its reader: a file with "%PDF-" among its first 1024 bytes is a
    /// document, any other is an image. For an unreadable file the path decides. Off: the path alone decides,
    /// see CImageView2DCtrl::LoadFile.
    bool bReaderByContent = false;
    /// After a capture of the screen the main window returns to its former state: maximised, full screen or
    /// neither. Off: maximised.
    bool bRestoreAfterCapture = false;
    /// On Wayland, where programs cannot see the screen, the desktop's own dialog takes captures
    /// (xdg-desktop-portal). Off: the library's snip tool, whose captures fail there.
    bool bPortalCapture = false;
    /// The dialog for saving an image starts in the image's folder, with its name and format, and has a
    /// filter for each format, whose suffix completes a name without one. Off: no name, the folder of the
    /// process, one filter for all, and the suffix "bmp".
    bool bProposeSaveName = false;
    /// The tool panels also have the buttons of the optional kinds of ShapeKinds: arrows, texts, and the
    /// kinds that a host registers as optional; all buttons have pictures beside their texts. Off: only the
    /// buttons of the six modes, with texts.
    bool bMoreShapes = false;
    /// Annotations with a pen or a brush of their own are painted with them, and the property panel has their
    /// colour, width and fill. Off: every annotation is green or, if selected, red.
    bool bOwnColors = false;
    /// Each image or page of a viewer's list has its own annotations: paging, adding and closing images keep
    /// them with it, and undoing a step of another page shows that page first. Off: a viewer has one set.
    bool bAnnotationsPerImage = false;
    /// When their image is turned by a quarter, flipped or cut, annotations keep their places on it, and when
    /// it is replaced by one of equal size, they stay; undo restores both exactly. Off: they are dropped.
    bool bCarryAnnotations = false;
    /// Every step on unsaved annotations is written to a file in the user's folder of states, which survives
    /// any end of the program; AnnotationRecovery finds it. Off: nothing is written.
    bool bAnnotationJournal = false;
    /// Keys edit the annotations of the 2D view that has the focus. Arrow keys move the selection by a pixel
    /// of the image, with Shift by ten; moves that follow each other within a second are one step. Ctrl+A
    /// selects everything, Ctrl+D duplicates; copying includes the selected annotations, pasting prefers them
    /// to the picture. Shift draws squares, circles and lines at steps of 45 degrees. Enter or a double click
    /// closes a polygon, Backspace removes its last corner, Escape cancels it. Off: none of this; Backspace
    /// then deletes the selection, and Escape leaves the corners until the next press.
    bool bEditKeys = false;
    /// Zoom and place of a 2D view stay over a change to an image of equal size; a view of another size keeps
    /// the zoom and the point in the middle, unless it shows the fitted image. Off: another image is fitted,
    /// and the zoom grows and shrinks with the view.
    bool bKeepPlace = false;
    /// "Go To" centres the pixel and marks it by a cross. Off: its position becomes the pan unchanged.
    bool bGotoCentres = false;
    /// The middle button, or the left one while Space is held, pans in every mode of the mouse. Off: only the
    /// left one in the panning mode.
    bool bPanAnywhere = false;
    /// Keys of the 2D view that has the focus. Arrow keys that move no selection (bEditKeys) pan by a tenth
    /// of the view where the image is larger than the view in that direction; otherwise Left and Right go to
    /// the previous and the next image of the list. PgUp and PgDn always do. Off: none of this.
    bool bViewKeys = false;
    /// The wheel of a 2D view scrolls an image that is larger than the view by a tenth of the view a notch,
    /// with Shift to the sides; at its edge a notch goes to the next or previous image of the list, where it
    /// shows the edge from which one reads on. An image that is in view as a whole is left also beyond the
    /// ends of the list (CImageView2DCtrl::signal_BeyondList). With Ctrl the wheel zooms. Off: it always
    /// zooms.
    bool bWheelPages = false;
    /// The button of a viewer that drops all its images has a picture of its own and stands last in the row.
    /// Off: it has the picture of "Delete" and stands beside the ruler.
    bool bClearApart = false;
    /// Opening, saving and rotating images, the runs of the processing tools and the reading of text are jobs
    /// (CJobs) beside the GUI thread: what asks for them returns at once, and their signals come when they
    /// are done. Files are shown in the order in which they were asked for. A newer run of a tool, or a newer
    /// opening that replaces the list, cancels the older one. What comes of an image that is not the current
    /// one any more is dropped with a word of signal_Failed. A save is carried out also when the program
    /// ends. Registered operations are called on a thread of a pool. Off: everything is done when the call
    /// returns.
    bool bBackground = false;
    /// Below one pixel of the screen per pixel of the image the 2D view shows in each pixel the mean of what
    /// it covers, so that thin lines stay and small text can be read. What would take long is made in the
    /// background: until it is there, the view shows what it can. At and above one, and when off: the nearest
    /// pixel.
    bool bSmoothReduction = false;
    /// Transparent images stand on a checkerboard, of squares that keep their places in the view. Off: on the
    /// grey that is around them.
    bool bCheckerboard = false;
    /// The pages of a document are in the list as soon as it is open, with their sizes, and are rendered one
    /// by one beside the GUI thread (CPDFPages): what is shown first, then what is next to it, then the
    /// rest, for the thumbnails; or at once, for whoever asks for pixels. A view shows an empty sheet until
    /// its page has come. Rendered pages take no more memory than CPageMemory allows. A page that cannot be
    /// rendered is white, and signal_Failed tells why, once. Off: all pages are rendered before a document is
    /// shown, up to the first that fails.
    bool bDeferredPages = false;
    /// Rulers have their length in units as a second line, where the image has a calibration
    /// (CAnnotationStore::SetCalibration). Off: only in pixels.
    bool bCalibratedRuler = false;
};
