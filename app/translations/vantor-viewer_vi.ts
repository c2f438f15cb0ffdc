<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="vi" sourcelanguage="en">
<context>
    <name>AnnotationDialogs</name>
    <message>
        <source>All files</source>
        <translation>Tất cả các tệp</translation>
    </message>
    <message>
        <source>Open Annotations</source>
        <translation>Mở chú thích</translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation>Chú thích</translation>
    </message>
    <message>
        <source>Import Annotations</source>
        <translation>Nhập chú thích</translation>
    </message>
    <message>
        <source>Save Annotations As</source>
        <translation>Lưu riêng chú thích</translation>
    </message>
    <message>
        <source>Export Annotations</source>
        <translation>Xuất chú thích</translation>
    </message>
    <message>
        <source>A file in the format %1 will not say everything.</source>
        <translation>Tệp ở định dạng %1 sẽ không chứa hết mọi thứ.</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Xuất</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Hủy</translation>
    </message>
    <message>
        <source>Save Annotations</source>
        <translation>Lưu chú thích</translation>
    </message>
    <message>
        <source>The annotations in %1 were changed by another window or program.</source>
        <translation>Chú thích trong %1 đã bị một cửa sổ hoặc chương trình khác thay đổi.</translation>
    </message>
    <message>
        <source>Overwriting the file loses those changes.</source>
        <translation>Ghi đè lên tệp sẽ làm mất những thay đổi đó.</translation>
    </message>
    <message>
        <source>&amp;Overwrite</source>
        <translation>&amp;Ghi đè</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Lưu &amp;thành...</translation>
    </message>
    <message>
        <source>The annotations were made for an image of %1 x %2 pixels; this one has %3 x %4.</source>
        <translation>Chú thích được tạo cho hình %1 x %2 điểm ảnh; hình này có %3 x %4.</translation>
    </message>
    <message>
        <source>Scale fits them to this image, Keep shows them at the same pixels.</source>
        <translation>Thu phóng làm chúng vừa với hình này, Giữ nguyên hiển thị chúng ở cùng điểm ảnh.</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <translation>&amp;Thu phóng</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>&amp;Giữ nguyên</translation>
    </message>
    <message>
        <source>&amp;Do Not Show</source>
        <translation>&amp;Không hiển thị</translation>
    </message>
</context>
<context>
    <name>CAnnotationFiles</name>
    <message>
        <source>Cannot read the annotations in %1. %2 The file stays as it is.</source>
        <translation>Không đọc được chú thích trong %1. %2 Tệp được giữ nguyên.</translation>
    </message>
    <message>
        <source>The annotations cannot be saved beside their image, for it has no file.</source>
        <translation>Không thể lưu chú thích bên cạnh ảnh vì ảnh không có tệp.</translation>
    </message>
    <message>
        <source>%1 holds other annotations, which are not shown. It stays as it is.</source>
        <translation>%1 có những chú thích khác không được hiển thị. Tệp được giữ nguyên.</translation>
    </message>
    <message>
        <source>The folder of %1 cannot be written. Its annotations are saved in %2.</source>
        <translation>Không ghi được vào thư mục của %1. Chú thích của nó được lưu trong %2.</translation>
    </message>
    <message>
        <source>Cannot save the annotations in %1. %2</source>
        <translation>Không lưu được chú thích vào %1. %2</translation>
    </message>
    <message>
        <source>%1 was changed by another window or program. The annotations do not save themselves any more.</source>
        <translation>%1 đã bị một cửa sổ hoặc chương trình khác thay đổi. Chú thích không còn tự lưu nữa.</translation>
    </message>
</context>
<context>
    <name>CDetailsDlg</name>
    <message>
        <source>Details</source>
        <translation>Chi tiết</translation>
    </message>
    <message>
        <source>%1:</source>
        <translation>%1:</translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation>Sao chép đường &amp;dẫn</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <translation>Hiện trong &amp;thư mục</translation>
    </message>
</context>
<context>
    <name>CEmptyHint</name>
    <message>
        <source>Drop files here</source>
        <translation>Thả tệp vào đây</translation>
    </message>
    <message>
        <source>Drop files here or press %1</source>
        <translation>Thả tệp vào đây hoặc nhấn %1</translation>
    </message>
</context>
<context>
    <name>CJobBar</name>
    <message>
        <source>Running work</source>
        <translation>Công việc đang chạy</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>và %n mục nữa</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is running</source>
        <translation>%1 đang chạy</translation>
    </message>
    <message>
        <source>Cancel: %1</source>
        <translation>Hủy: %1</translation>
    </message>
    <message>
        <source>Little Memory</source>
        <translation>Thiếu bộ nhớ</translation>
    </message>
    <message>
        <source>%1 may need %2 of memory; %3 are free.</source>
        <translation>%1 có thể cần %2 bộ nhớ; còn trống %3.</translation>
    </message>
    <message>
        <source>&amp;Begin</source>
        <translation>&amp;Bắt đầu</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Hủy</translation>
    </message>
</context>
<context>
    <name>CLogPanel</name>
    <message>
        <source>All messages</source>
        <translation>Mọi thông báo</translation>
    </message>
    <message>
        <source>Without the details</source>
        <translation>Không có chi tiết</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>Cảnh báo và lỗi</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>Lỗi</translation>
    </message>
    <message>
        <source>Messages that are shown:</source>
        <translation>Những thông báo được hiện:</translation>
    </message>
    <message>
        <source>Messages that are shown</source>
        <translation>Những thông báo được hiện</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Tools</source>
        <translation>Công cụ</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Thuộc tính</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Nhật ký</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>Đã lưu %1</translation>
    </message>
    <message>
        <source>Settings cannot be kept in the folder %1; they last until the program ends.</source>
        <translation>Không thể lưu thiết lập vào thư mục %1; thiết lập chỉ có hiệu lực đến khi thoát chương trình.</translation>
    </message>
    <message>
        <source>Log files cannot be written in the folder %1.</source>
        <translation>Không thể ghi tệp nhật ký vào thư mục %1.</translation>
    </message>
    <message>
        <source>Globe</source>
        <translation>Quả địa cầu</translation>
    </message>
    <message>
        <source>About Vantor</source>
        <translation>Giới thiệu về Vantor</translation>
    </message>
    <message>
        <source>Vantor %1

An example host of libVantorCommon: components for viewing, annotating and processing raster images.</source>
        <translation>Vantor %1

Chương trình mẫu của libVantorCommon: các thành phần để xem, chú thích và xử lý ảnh raster.</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Tệp</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Mở...</translation>
    </message>
    <message>
        <source>&amp;Add Images...</source>
        <translation>&amp;Thêm ảnh...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>Mở &amp;gần đây</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Lưu thành...</translation>
    </message>
    <message>
        <source>&amp;Close Image</source>
        <translation>Đó&amp;ng ảnh</translation>
    </message>
    <message>
        <source>Close A&amp;ll Images</source>
        <translation>Đóng tất &amp;cả ảnh</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>Th&amp;oát</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>Chỉnh &amp;sửa</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Hoàn tác</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Làm lại</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Sao chép</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Dán</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Xóa</translation>
    </message>
    <message>
        <source>Rotate &amp;Left</source>
        <translation>Xoay &amp;trái</translation>
    </message>
    <message>
        <source>Rotate Ri&amp;ght</source>
        <translation>Xoay &amp;phải</translation>
    </message>
    <message>
        <source>&amp;One Viewer (1x1)</source>
        <translation>&amp;Một khung xem (1x1)</translation>
    </message>
    <message>
        <source>&amp;Two Viewers (2x1)</source>
        <translation>&amp;Hai khung xem (2x1)</translation>
    </message>
    <message>
        <source>&amp;Four Viewers (2x2)</source>
        <translation>&amp;Bốn khung xem (2x2)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Xem</translation>
    </message>
    <message>
        <source>Fit to &amp;Window</source>
        <translation>&amp;Vừa cửa sổ</translation>
    </message>
    <message>
        <source>&amp;Go To...</source>
        <translation>Đ&amp;i tới...</translation>
    </message>
    <message>
        <source>&amp;Previous Image</source>
        <translation>Ảnh t&amp;rước</translation>
    </message>
    <message>
        <source>&amp;Next Image</source>
        <translation>Ảnh &amp;sau</translation>
    </message>
    <message>
        <source>&amp;2D View</source>
        <translation>Xem &amp;2D</translation>
    </message>
    <message>
        <source>&amp;3D View</source>
        <translation>Xem &amp;3D</translation>
    </message>
    <message>
        <source>&amp;Docks</source>
        <translation>Các bả&amp;ng neo</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>&amp;Giao diện</translation>
    </message>
    <message>
        <source>As the &amp;Desktop</source>
        <translation>Theo màn hình &amp;nền</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Sáng</translation>
    </message>
    <message>
        <source>Dar&amp;k</source>
        <translation>&amp;Tối</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Công cụ</translation>
    </message>
    <message>
        <source>&amp;Median Filter...</source>
        <translation>Lọc &amp;trung vị...</translation>
    </message>
    <message>
        <source>&amp;Sobel Filter...</source>
        <translation>Lọc &amp;Sobel...</translation>
    </message>
    <message>
        <source>&amp;OCR...</source>
        <translation>&amp;Nhận dạng chữ OCR...</translation>
    </message>
    <message>
        <source>&amp;Capture the Screen</source>
        <translation>Chụ&amp;p màn hình</translation>
    </message>
    <message>
        <source>&amp;Globe</source>
        <translation>&amp;Quả địa cầu</translation>
    </message>
    <message>
        <source>S&amp;elect</source>
        <translation>&amp;Chọn</translation>
    </message>
    <message>
        <source>&amp;Pan</source>
        <translation>&amp;Kéo ảnh</translation>
    </message>
    <message>
        <source>&amp;Ruler</source>
        <translation>T&amp;hước đo</translation>
    </message>
    <message>
        <source>&amp;Draw</source>
        <translation>&amp;Vẽ</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>T&amp;hiết lập</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>Tù&amp;y chọn...</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>T&amp;rợ giúp</translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation>&amp;Phím tắt</translation>
    </message>
    <message>
        <source>&amp;About Vantor</source>
        <translation>&amp;Giới thiệu về Vantor</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>Thanh công cụ</translation>
    </message>
    <message>
        <source>The 3D view needs OpenGL 3.3, which this system does not offer.</source>
        <translation>Chế độ xem 3D cần OpenGL 3.3, thứ mà hệ thống này không có.</translation>
    </message>
    <message>
        <source>Ne&amp;xt Pane</source>
        <translation>Khung tiế&amp;p theo</translation>
    </message>
    <message>
        <source>Pre&amp;vious Pane</source>
        <translation>Khung &amp;trước đó</translation>
    </message>
    <message>
        <source>&amp;Properties</source>
        <translation>T&amp;huộc tính</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Nhật ký</translation>
    </message>
    <message>
        <source>Flip &amp;Horizontally</source>
        <translation>Lật &amp;ngang</translation>
    </message>
    <message>
        <source>Flip &amp;Vertically</source>
        <translation>Lật dọ&amp;c</translation>
    </message>
    <message>
        <source>Cr&amp;op to the Shape</source>
        <translation>Cắt th&amp;eo hình</translation>
    </message>
    <message>
        <source>Grey&amp;scale</source>
        <translation>Thang xá&amp;m</translation>
    </message>
    <message>
        <source>Gaussian &amp;Blur...</source>
        <translation>&amp;Làm mờ Gauss...</translation>
    </message>
    <message>
        <source>&amp;Unsharp Mask...</source>
        <translation>Làm &amp;rõ nét...</translation>
    </message>
    <message>
        <source>&amp;Threshold...</source>
        <translation>N&amp;gưỡng hóa...</translation>
    </message>
    <message>
        <source>Brightness, Co&amp;ntrast, Gamma...</source>
        <translation>Độ sáng, tương phản, gam&amp;ma...</translation>
    </message>
    <message>
        <source>&amp;Invert...</source>
        <translation>Đảo mà&amp;u...</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Tên</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Loại</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Vị trí</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Kích thước</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>Khóa</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Hiện</translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation>Chú thích</translation>
    </message>
    <message>
        <source>&amp;Annotations</source>
        <translation>Chú &amp;thích</translation>
    </message>
    <message>
        <source>Copy &amp;with Annotations</source>
        <translation>Sao chép &amp;kèm chú thích</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>Chọn tất cả (&amp;A)</translation>
    </message>
    <message>
        <source>Dupl&amp;icate</source>
        <translation>Nhân đô&amp;i</translation>
    </message>
    <message>
        <source>Export Picture</source>
        <translation>Xuất hình ảnh</translation>
    </message>
    <message>
        <source>Exported %1</source>
        <translation>Đã xuất %1</translation>
    </message>
    <message>
        <source>The picture cannot be exported. %1</source>
        <translation>Không thể xuất hình ảnh. %1</translation>
    </message>
    <message>
        <source>The picture cannot be copied: there is not enough memory.</source>
        <translation>Không thể sao chép hình ảnh: không đủ bộ nhớ.</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>Lư&amp;u</translation>
    </message>
    <message>
        <source>Open A&amp;nnotations...</source>
        <translation>Mở c&amp;hú thích...</translation>
    </message>
    <message>
        <source>Save Anno&amp;tations As...</source>
        <translation>Lưu &amp;riêng chú thích...</translation>
    </message>
    <message>
        <source>&amp;Import Annotations...</source>
        <translation>Nhậ&amp;p chú thích...</translation>
    </message>
    <message>
        <source>&amp;Export Annotations...</source>
        <translation>&amp;Xuất chú thích...</translation>
    </message>
    <message>
        <source>&amp;Save Annotations by Themselves</source>
        <translation>Tự động &amp;lưu chú thích</translation>
    </message>
    <message>
        <source>&amp;Reopen at the Start What Was Open</source>
        <translation>Khi khởi động &amp;mở lại những gì đã mở</translation>
    </message>
    <message>
        <source>Cannot read the annotations in %1. %2</source>
        <translation>Không đọc được chú thích trong %1. %2</translation>
    </message>
    <message>
        <source>%1 has no annotations of this image.</source>
        <translation>%1 không có chú thích của ảnh này.</translation>
    </message>
    <message>
        <source>Cannot save the annotations in %1. %2</source>
        <translation>Không lưu được chú thích vào %1. %2</translation>
    </message>
    <message>
        <source>Close an image to make room for %1.</source>
        <translation>Hãy đóng một ảnh để có chỗ cho %1.</translation>
    </message>
    <message>
        <source>The image of some annotations is gone. They are in %1.</source>
        <translation>Ảnh của một số chú thích không còn. Chúng nằm trong %1.</translation>
    </message>
    <message>
        <source>R&amp;estore Cleared Annotations</source>
        <translation>Khôi phục chú thích đã mất (&amp;R)</translation>
    </message>
    <message numerus="yes">
        <source>%n annotation(s) went with the old image. Edit &gt; Restore Cleared Annotations brings them back.</source>
        <translation>
            <numerusform>%n chú thích đã mất cùng với hình cũ. Chỉnh sửa &gt; Khôi phục chú thích đã mất sẽ đưa chúng trở lại.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n annotation(s) of a kind that is unknown here did not go along with the image. They keep their old places in the file.</source>
        <translation>
            <numerusform>%n chú thích thuộc loại chưa biết đã không đi theo hình. Chúng giữ vị trí cũ trong tệp.</numerusform>
        </translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Trang</translation>
    </message>
    <message>
        <source>Vantor&apos;s own code is under the MIT licence. It uses Qt 5 (LGPL 3), poppler (GPL 2 or 3), Tesseract and Leptonica (Apache 2.0, BSD-like), libtiff (BSD-like), giflib (MIT) and Highway (Apache 2.0 or BSD). Only the separate program vantor-pdf contains poppler; as a whole it is under the GPL.</source>
        <translation>Mã nguồn riêng của Vantor theo giấy phép MIT. Chương trình dùng Qt 5 (LGPL 3), poppler (GPL 2 hoặc 3), Tesseract và Leptonica (Apache 2.0, kiểu BSD), libtiff (kiểu BSD), giflib (MIT) và Highway (Apache 2.0 hoặc BSD). Chỉ chương trình riêng vantor-pdf chứa poppler; toàn bộ chương trình đó theo GPL.</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>Th&amp;u phóng</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Phóng t&amp;o</translation>
    </message>
    <message>
        <source>Enlarge the image about the middle of the view</source>
        <translation>Phóng to ảnh quanh điểm giữa khung nhìn</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Thu &amp;nhỏ</translation>
    </message>
    <message>
        <source>Make the image smaller about the middle of the view</source>
        <translation>Thu nhỏ ảnh quanh điểm giữa khung nhìn</translation>
    </message>
    <message>
        <source>&amp;Actual Size</source>
        <translation>&amp;Kích thước thật</translation>
    </message>
    <message>
        <source>One pixel of the screen for each pixel of the image: 100 %</source>
        <translation>Mỗi điểm ảnh một điểm trên màn hình: 100 %</translation>
    </message>
    <message>
        <source>Fit &amp;Width</source>
        <translation>Vừa chiều &amp;rộng</translation>
    </message>
    <message>
        <source>Make the image as wide as the view</source>
        <translation>Cho ảnh rộng bằng khung nhìn</translation>
    </message>
    <message>
        <source>To a &amp;Rectangle</source>
        <translation>Đến một hình &amp;chữ nhật</translation>
    </message>
    <message>
        <source>Drag a rectangle; what it encloses fills the view</source>
        <translation>Kéo một hình chữ nhật; phần bên trong sẽ lấp đầy khung nhìn</translation>
    </message>
    <message>
        <source>To the &amp;Shape</source>
        <translation>Đến &amp;hình đã chọn</translation>
    </message>
    <message>
        <source>Show the selected annotations as large as possible</source>
        <translation>Hiện các chú thích đã chọn lớn nhất có thể</translation>
    </message>
    <message>
        <source>&amp;Type a Zoom...</source>
        <translation>&amp;Gõ mức thu phóng...</translation>
    </message>
    <message>
        <source>Type the zoom in the status bar</source>
        <translation>Gõ mức thu phóng vào thanh trạng thái</translation>
    </message>
    <message>
        <source>&amp;Minimap</source>
        <translation>&amp;Bản đồ nhỏ</translation>
    </message>
    <message>
        <source>Show the whole image in a corner while a part of it is in view</source>
        <translation>Hiện toàn bộ ảnh ở một góc khi chỉ thấy một phần</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no zoom. Type a number of percent, such as 150.</source>
        <translation>&quot;%1&quot; không phải là mức thu phóng. Hãy gõ số phần trăm, ví dụ 150.</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>S&amp;o sánh</translation>
    </message>
    <message>
        <source>&amp;Link Viewers</source>
        <translation>&amp;Liên kết các khung xem</translation>
    </message>
    <message>
        <source>Zoom and pan all shown viewers together, with a cross where the mouse is</source>
        <translation>Thu phóng và di chuyển mọi khung xem cùng nhau, với dấu thập ở vị trí chuột</translation>
    </message>
    <message>
        <source>&amp;Show Other Viewer</source>
        <translation>&amp;Hiện khung xem khác</translation>
    </message>
    <message>
        <source>Show the next viewer&apos;s image in this one, at the same place; the key X does it while it is held</source>
        <translation>Hiện ảnh của khung kế tiếp tại cùng vị trí trong khung này; giữ phím X cũng làm vậy</translation>
    </message>
    <message>
        <source>&amp;Difference</source>
        <translation>&amp;Khác biệt</translation>
    </message>
    <message>
        <source>With Viewer &amp;%1</source>
        <translation>Với khung xem &amp;%1</translation>
    </message>
    <message>
        <source>Add the difference of the two images to this viewer&apos;s list</source>
        <translation>Thêm phần khác biệt của hai ảnh vào danh sách của khung xem này</translation>
    </message>
    <message>
        <source>There is no image in %1.</source>
        <translation>Không có ảnh nào trong %1.</translation>
    </message>
    <message>
        <source>F&amp;irst Image</source>
        <translation>&amp;Xem ảnh đầu tiên</translation>
    </message>
    <message>
        <source>La&amp;st Image</source>
        <translation>Ảnh &amp;cuối cùng</translation>
    </message>
    <message>
        <source>F&amp;ull Screen</source>
        <translation>Đầ&amp;y màn hình</translation>
    </message>
    <message>
        <source>Slide S&amp;how</source>
        <translation>Trình chiếu &amp;liên tiếp</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>&amp;Duyệt thư mục...</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Mở thư mục</translation>
    </message>
    <message>
        <source>&amp;Move to Trash...</source>
        <translation>Chu&amp;yển vào thùng rác...</translation>
    </message>
    <message>
        <source>Restore from Tras&amp;h</source>
        <translation>&amp;Khôi phục từ thùng rác</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>Chuyển vào thùng rác</translation>
    </message>
    <message>
        <source>Move &quot;%1&quot; and its annotations to the trash?</source>
        <translation>Chuyển &quot;%1&quot; và các chú thích của nó vào thùng rác?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be moved to the trash.</source>
        <translation>Không thể chuyển &quot;%1&quot; vào thùng rác.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be restored.</source>
        <translation>Không thể khôi phục &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>&amp;Results</source>
        <translation>&amp;Kết quả</translation>
    </message>
    <message>
        <source>&amp;Histogram</source>
        <translation>&amp;Biểu đồ tần suất</translation>
    </message>
    <message>
        <source>Pro&amp;file</source>
        <translation>Biến thiên &amp;dọc đường</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>Phím tắt</translation>
    </message>
    <message>
        <source>Pag&amp;e...</source>
        <translation>Tr&amp;ang...</translation>
    </message>
    <message>
        <source>Type the number of a page or an image in the status bar</source>
        <translation>Gõ số trang hoặc số ảnh ở thanh trạng thái</translation>
    </message>
    <message>
        <source>Wheel Tu&amp;rns Pages</source>
        <translation>Con lăn &amp;qua trang</translation>
    </message>
    <message>
        <source>The wheel scrolls and goes on to the next page at the edge; with Ctrl it zooms</source>
        <translation>Con lăn cuộn ảnh và qua trang kế tiếp ở mép; cùng với Ctrl thì thu phóng</translation>
    </message>
    <message>
        <source>There is no page &quot;%1&quot;. Type a number from 1 to %2.</source>
        <translation>Không có trang &quot;%1&quot;. Hãy gõ một số từ 1 đến %2.</translation>
    </message>
    <message>
        <source>E&amp;xport Picture...</source>
        <translation>Xuất &amp;bức ảnh...</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>&amp;In...</translation>
    </message>
    <message>
        <source>&amp;Details...</source>
        <translation>Chi tiết (&amp;E)...</translation>
    </message>
    <message>
        <source>Capture after &amp;3 Seconds</source>
        <translation>Chụp sau &amp;3 giây</translation>
    </message>
    <message>
        <source>Capture after &amp;5 Seconds</source>
        <translation>Chụp sau &amp;5 giây</translation>
    </message>
    <message>
        <source>Capture the &amp;Whole Screen</source>
        <translation>Chụp toàn màn hình (&amp;W)</translation>
    </message>
    <message>
        <source>The picture cannot be printed: there is not enough memory.</source>
        <translation>Không thể in ảnh: không đủ bộ nhớ.</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>Trình xem</translation>
    </message>
    <message>
        <source>Set Sc&amp;ale...</source>
        <translation>Đặt tỷ lệ (&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Find Particles...</source>
        <translation>Tìm hạt (&amp;F)...</translation>
    </message>
</context>
<context>
    <name>CMeasureDocks</name>
    <message>
        <source>Results</source>
        <translation>Kết quả</translation>
    </message>
    <message>
        <source>Histogram</source>
        <translation>Biểu đồ tần suất</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>Biến thiên dọc đường</translation>
    </message>
</context>
<context>
    <name>CMessageBar</name>
    <message>
        <source>Messages</source>
        <translation>Thông báo</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Cảnh báo</translation>
    </message>
    <message>
        <source>Close the message</source>
        <translation>Đóng thông báo</translation>
    </message>
    <message numerus="yes">
        <source>%n more in the log.</source>
        <translation>
            <numerusform>Còn %n thông báo nữa trong nhật ký.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CPageField</name>
    <message>
        <source>Page</source>
        <translation>Trang</translation>
    </message>
    <message>
        <source>Page or image: click to type the number of another one</source>
        <translation>Trang hoặc ảnh: bấm để gõ số khác</translation>
    </message>
</context>
<context>
    <name>CPreferencesPage</name>
    <message>
        <source>&amp;Open the Documents Again</source>
        <translation>&amp;Mở lại các tài liệu</translation>
    </message>
    <message>
        <source>Documents that are open keep their resolution until then</source>
        <translation>Tài liệu đang mở giữ độ phân giải cho đến lúc đó</translation>
    </message>
    <message>
        <source>Where the program was started</source>
        <translation>Nơi chương trình được khởi động</translation>
    </message>
    <message>
        <source>C&amp;hoose...</source>
        <translation>&amp;Chọn...</translation>
    </message>
</context>
<context>
    <name>CPrinting</name>
    <message>
        <source>Print</source>
        <translation>In</translation>
    </message>
    <message>
        <source>&amp;True Size</source>
        <translation>&amp;Kích thước thật</translation>
    </message>
    <message>
        <source>Print at the size that the file tells, or at 96 pixels per inch; otherwise as large as the paper</source>
        <translation>In theo kích thước mà tệp cho biết hoặc 96 điểm ảnh mỗi inch; nếu không thì vừa khổ giấy</translation>
    </message>
</context>
<context>
    <name>CRecentFiles</name>
    <message>
        <source>&amp;Clear the List</source>
        <translation>&amp;Xóa danh sách</translation>
    </message>
</context>
<context>
    <name>CRecoveryBar</name>
    <message>
        <source>an image without a file</source>
        <translation>một ảnh không có tệp</translation>
    </message>
    <message>
        <source>Unsaved annotations</source>
        <translation>Chú thích chưa lưu</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Thông tin</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Khôi phục</translation>
    </message>
    <message>
        <source>Open the images and show their annotations again</source>
        <translation>Mở các ảnh và hiển thị lại chú thích của chúng</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Bỏ</translation>
    </message>
    <message>
        <source>Give these annotations up</source>
        <translation>Bỏ những chú thích này</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Để sau</translation>
    </message>
    <message>
        <source>Ask again at the next start</source>
        <translation>Hỏi lại vào lần khởi động sau</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>và %n mục nữa</numerusform>
        </translation>
    </message>
    <message>
        <source>The program ended before the annotations of these images were saved: %1.</source>
        <translation>Chương trình đã kết thúc trước khi chú thích của các ảnh này được lưu: %1.</translation>
    </message>
</context>
<context>
    <name>CScaleDlg</name>
    <message>
        <source>Set Scale</source>
        <translation>Đặt tỷ lệ</translation>
    </message>
    <message>
        <source>&amp;Distance in pixels</source>
        <translation>&amp;Khoảng cách theo điểm ảnh</translation>
    </message>
    <message>
        <source>Known &amp;length</source>
        <translation>Độ &amp;dài đã biết</translation>
    </message>
    <message>
        <source>&amp;Unit</source>
        <translation>Đơ&amp;n vị</translation>
    </message>
    <message>
        <source>Pixel &amp;width in units</source>
        <translation>Chiều &amp;rộng điểm ảnh theo đơn vị</translation>
    </message>
    <message>
        <source>Pixel &amp;height in units</source>
        <translation>Chiều &amp;cao điểm ảnh theo đơn vị</translation>
    </message>
    <message>
        <source>Origin &amp;x in pixels</source>
        <translation>Gốc &amp;x theo điểm ảnh</translation>
    </message>
    <message>
        <source>Origin &amp;y in pixels</source>
        <translation>Gốc &amp;y theo điểm ảnh</translation>
    </message>
    <message>
        <source>&amp;Pixels Again</source>
        <translation>Lại theo đ&amp;iểm ảnh</translation>
    </message>
    <message>
        <source>&amp;From the File</source>
        <translation>&amp;Từ tệp</translation>
    </message>
</context>
<context>
    <name>CShortcutsDlg</name>
    <message>
        <source>Shortcuts</source>
        <translation>Phím tắt</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Thao tác</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Phím</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Trình đơn</translation>
    </message>
    <message>
        <source>In a viewer</source>
        <translation>Trong khung xem</translation>
    </message>
    <message>
        <source>Zoom about the mouse</source>
        <translation>Thu phóng quanh con trỏ</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Con lăn</translation>
    </message>
    <message>
        <source>Pan, in panning mode</source>
        <translation>Kéo ảnh, ở chế độ kéo ảnh</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>Kéo chuột</translation>
    </message>
    <message>
        <source>Select, move or resize an annotation</source>
        <translation>Chọn, dời, đổi cỡ chú thích</translation>
    </message>
    <message>
        <source>Click, drag it or a handle</source>
        <translation>Nhấp, kéo nó hoặc điểm nắm</translation>
    </message>
    <message>
        <source>Delete the selected annotations</source>
        <translation>Xóa các chú thích đã chọn</translation>
    </message>
    <message>
        <source>Delete or Backspace</source>
        <translation>Delete hoặc Backspace</translation>
    </message>
    <message>
        <source>Back to selecting</source>
        <translation>Trở về chế độ chọn</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Close a polygon</source>
        <translation>Khép kín đa giác</translation>
    </message>
    <message>
        <source>Click at its first corner</source>
        <translation>Nhấp vào đỉnh đầu tiên</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>Trình đơn ngữ cảnh</translation>
    </message>
    <message>
        <source>Right click or Menu key</source>
        <translation>Nhấp phải hoặc phím Menu</translation>
    </message>
    <message>
        <source>Turn the 3D view</source>
        <translation>Xoay khung xem 3D</translation>
    </message>
    <message>
        <source>Pan, in every mode</source>
        <translation>Di chuyển ảnh, ở mọi chế độ</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>Các phím mũi tên</translation>
    </message>
    <message>
        <source>Previous and next image</source>
        <translation>Ảnh trước và ảnh sau</translation>
    </message>
    <message>
        <source>PgUp and PgDn</source>
        <translation>PgUp và PgDn</translation>
    </message>
    <message>
        <source>Drag with the middle button or Space</source>
        <translation>Kéo bằng nút giữa hoặc với phím cách</translation>
    </message>
    <message>
        <source>Pan, or previous and next image</source>
        <translation>Di chuyển, hoặc ảnh trước và sau</translation>
    </message>
    <message>
        <source>Show the next viewer&apos;s image</source>
        <translation>Hiện ảnh của khung xem kế tiếp</translation>
    </message>
    <message>
        <source>Hold X</source>
        <translation>Giữ phím X</translation>
    </message>
</context>
<context>
    <name>CShortcutsPage</name>
    <message>
        <source>Shortcuts</source>
        <translation>Phím tắt</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Hành động</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Phím</translation>
    </message>
    <message>
        <source>&amp;Keys of the action:</source>
        <translation>&amp;Phím của hành động:</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>&amp;Mặc định</translation>
    </message>
    <message>
        <source>&amp;All Defaults</source>
        <translation>Mặc định &amp;tất cả</translation>
    </message>
    <message>
        <source>These keys belong to &quot;%1&quot;.</source>
        <translation>Các phím này thuộc về &quot;%1&quot;.</translation>
    </message>
</context>
<context>
    <name>CUnsavedWork</name>
    <message>
        <source>annotations of an image without a file</source>
        <translation>chú thích của một ảnh không có tệp</translation>
    </message>
    <message>
        <source>%1: annotations</source>
        <translation>%1: chú thích</translation>
    </message>
    <message>
        <source>a captured or pasted image</source>
        <translation>một ảnh đã chụp hoặc đã dán</translation>
    </message>
    <message>
        <source>%1: the image was changed</source>
        <translation>%1: ảnh đã được thay đổi</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>và %n mục nữa</numerusform>
        </translation>
    </message>
    <message>
        <source>Unsaved Work</source>
        <translation>Công việc chưa lưu</translation>
    </message>
    <message>
        <source>Save what would be lost?</source>
        <translation>Lưu những gì sẽ bị mất?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Lưu</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Bỏ</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Hủy</translation>
    </message>
</context>
<context>
    <name>CZoomField</name>
    <message>
        <source>Zoom</source>
        <translation>Thu phóng</translation>
    </message>
    <message>
        <source>Zoom: click to type another one</source>
        <translation>Thu phóng: nhấn để gõ mức khác</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>ImageFacts</name>
    <message>
        <source>Name</source>
        <translation>Tên</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Thư mục</translation>
    </message>
    <message>
        <source>File size</source>
        <translation>Kích thước tệp</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n byte(s))</source>
        <translation>
            <numerusform>%1 (%n byte)</numerusform>
        </translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Sửa đổi</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Định dạng</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Kích thước</translation>
    </message>
    <message>
        <source>%1 x %2 pixels</source>
        <translation>%1 x %2 điểm ảnh</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Kênh</translation>
    </message>
    <message numerus="yes">
        <source>%n of %1 bits</source>
        <translation>
            <numerusform>%n, mỗi kênh %1 bit</numerusform>
        </translation>
    </message>
    <message>
        <source>Page size</source>
        <translation>Khổ trang</translation>
    </message>
    <message>
        <source>%1 x %2 mm</source>
        <translation>%1 x %2 mm</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Độ phân giải</translation>
    </message>
    <message>
        <source>%1 dots per inch</source>
        <translation>%1 điểm mỗi inch</translation>
    </message>
    <message>
        <source>Color profile</source>
        <translation>Hồ sơ màu</translation>
    </message>
    <message>
        <source>In the file, not applied</source>
        <translation>Có trong tệp, không áp dụng</translation>
    </message>
</context>
<context>
    <name>LibraryTexts</name>
    <message>
        <source>Cannot load image %1.</source>
        <translation>Không thể tải ảnh %1.</translation>
    </message>
    <message>
        <source>Cannot load pdf file %1.</source>
        <translation>Không thể tải tệp PDF %1.</translation>
    </message>
    <message>
        <source>Cannot load all of pdf file %1.</source>
        <translation>Không thể tải toàn bộ tệp PDF %1.</translation>
    </message>
    <message>
        <source>Cannot save image %1.</source>
        <translation>Không thể lưu ảnh %1.</translation>
    </message>
    <message>
        <source>Cannot paste %1.</source>
        <translation>Không thể dán %1.</translation>
    </message>
    <message>
        <source>Cannot rotate the image.</source>
        <translation>Không thể xoay ảnh.</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>Không có tệp như vậy.</translation>
    </message>
    <message>
        <source>It is not a regular file.</source>
        <translation>Đó không phải là tệp thông thường.</translation>
    </message>
    <message>
        <source>Reading the file is not permitted.</source>
        <translation>Không được phép đọc tệp.</translation>
    </message>
    <message>
        <source>The file cannot be opened: %1.</source>
        <translation>Không thể mở tệp: %1.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>Tệp trống.</translation>
    </message>
    <message>
        <source>It is not an image in BMP, JPEG, PNG, GIF, TIFF, PPM, PGM or PBM format.</source>
        <translation>Đó không phải là ảnh dạng BMP, JPEG, PNG, GIF, TIFF, PPM, PGM hay PBM.</translation>
    </message>
    <message>
        <source>The %1 file is damaged, too large or of an unsupported kind.</source>
        <translation>Tệp %1 bị hỏng, quá lớn hoặc thuộc loại không được hỗ trợ.</translation>
    </message>
    <message>
        <source>The %1 file is too short for the size that it claims.</source>
        <translation>Tệp %1 quá ngắn so với kích thước mà nó khai báo.</translation>
    </message>
    <message>
        <source>The picture of the %1 file is empty or larger than the limit.</source>
        <translation>Ảnh trong tệp %1 trống hoặc lớn hơn giới hạn.</translation>
    </message>
    <message>
        <source>There is not enough memory for the image.</source>
        <translation>Không đủ bộ nhớ cho ảnh.</translation>
    </message>
    <message>
        <source>There is not enough memory for the copy.</source>
        <translation>Không đủ bộ nhớ cho bản sao.</translation>
    </message>
    <message>
        <source>There is not enough memory for the filter.</source>
        <translation>Không đủ bộ nhớ cho bộ lọc.</translation>
    </message>
    <message>
        <source>There is not enough memory for the rotated image.</source>
        <translation>Không đủ bộ nhớ cho ảnh đã xoay.</translation>
    </message>
    <message>
        <source>There is not enough memory to save the image.</source>
        <translation>Không đủ bộ nhớ để lưu ảnh.</translation>
    </message>
    <message>
        <source>Out of memory.</source>
        <translation>Hết bộ nhớ.</translation>
    </message>
    <message>
        <source>The rotated image would be too large.</source>
        <translation>Ảnh sau khi xoay sẽ quá lớn.</translation>
    </message>
    <message>
        <source>The name must end in bmp, jpg, jpeg, png, tif, tiff, ppm, pgm or gif.</source>
        <translation>Tên phải kết thúc bằng bmp, jpg, jpeg, png, tif, tiff, ppm, pgm hoặc gif.</translation>
    </message>
    <message>
        <source>Only images of 8 bits per channel can be saved.</source>
        <translation>Chỉ có thể lưu ảnh 8 bit mỗi kênh.</translation>
    </message>
    <message>
        <source>Only images of 8 bits per channel can be filtered.</source>
        <translation>Chỉ có thể lọc ảnh 8 bit mỗi kênh.</translation>
    </message>
    <message>
        <source>The file or its folder cannot be written.</source>
        <translation>Không thể ghi vào tệp hoặc thư mục của nó.</translation>
    </message>
    <message>
        <source>The file could not be written whole.</source>
        <translation>Không thể ghi trọn vẹn tệp.</translation>
    </message>
    <message>
        <source>The file is missing, no regular file, or must not be read.</source>
        <translation>Tệp không tồn tại, không phải tệp thông thường hoặc không được phép đọc.</translation>
    </message>
    <message>
        <source>The document is too large for the memory.</source>
        <translation>Tài liệu quá lớn so với bộ nhớ.</translation>
    </message>
    <message>
        <source>The document needs a password.</source>
        <translation>Tài liệu cần mật khẩu.</translation>
    </message>
    <message>
        <source>The password is wrong.</source>
        <translation>Mật khẩu sai.</translation>
    </message>
    <message>
        <source>It is not a PDF document with pages, or it is damaged.</source>
        <translation>Đó không phải là tài liệu PDF có trang, hoặc tài liệu bị hỏng.</translation>
    </message>
    <message>
        <source>Page %1 of %2 cannot be rendered.</source>
        <translation>Không thể hiển thị trang %1 trên %2.</translation>
    </message>
    <message>
        <source>No source viewer is chosen.</source>
        <translation>Chưa chọn khung xem nguồn.</translation>
    </message>
    <message>
        <source>The source viewer shows no image.</source>
        <translation>Khung xem nguồn không có ảnh.</translation>
    </message>
    <message>
        <source>No language was selected.</source>
        <translation>Chưa chọn ngôn ngữ.</translation>
    </message>
    <message>
        <source>The OCR engine cannot use the language data.</source>
        <translation>Bộ máy OCR không dùng được dữ liệu ngôn ngữ.</translation>
    </message>
    <message>
        <source>The region is too large for the OCR engine.</source>
        <translation>Vùng quá lớn đối với bộ máy OCR.</translation>
    </message>
    <message>
        <source>There is not enough memory for the OCR engine.</source>
        <translation>Không đủ bộ nhớ cho bộ máy OCR.</translation>
    </message>
    <message>
        <source>The OCR engine failed.</source>
        <translation>Bộ máy OCR gặp lỗi.</translation>
    </message>
    <message>
        <source>The file is incomplete: %1 of %2 rows are missing or cut short.</source>
        <translation>Tệp không đầy đủ: %1 trên %2 hàng bị thiếu hoặc bị cắt ngắn.</translation>
    </message>
    <message>
        <source>The file is incomplete: %1 pixels of the picture are missing.</source>
        <translation>Tệp không đầy đủ: thiếu %1 điểm ảnh.</translation>
    </message>
    <message>
        <source>The file is incomplete: the picture is missing from row %1 on.</source>
        <translation>Tệp không đầy đủ: thiếu ảnh từ hàng %1 trở đi.</translation>
    </message>
    <message>
        <source>The file is incomplete: %1</source>
        <translation>Tệp không đầy đủ: %1</translation>
    </message>
    <message>
        <source>The file has a flaw: %1</source>
        <translation>Tệp có lỗi nhỏ: %1</translation>
    </message>
    <message>
        <source>It is the first of at least %1 frames.</source>
        <translation>Đây là khung hình đầu tiên trong ít nhất %1 khung hình.</translation>
    </message>
    <message>
        <source>It is the first of %1 frames.</source>
        <translation>Đây là khung hình đầu tiên trong %1 khung hình.</translation>
    </message>
    <message>
        <source>It is the first of more than %1 pages.</source>
        <translation>Đây là trang đầu tiên trong hơn %1 trang.</translation>
    </message>
    <message>
        <source>It is the first of %1 pages.</source>
        <translation>Đây là trang đầu tiên trong %1 trang.</translation>
    </message>
    <message>
        <source>There is not enough memory for the changed image.</source>
        <translation>Không đủ bộ nhớ cho ảnh đã thay đổi.</translation>
    </message>
    <message>
        <source>There is no image to change.</source>
        <translation>Không có ảnh để thay đổi.</translation>
    </message>
    <message>
        <source>The part to keep has no pixels in the image.</source>
        <translation>Phần cần giữ không chứa điểm ảnh nào của ảnh.</translation>
    </message>
    <message>
        <source>The filter cannot be loaded: %1.</source>
        <translation>Không thể tải bộ lọc: %1.</translation>
    </message>
    <message>
        <source>The BMP file ends before its pixels.</source>
        <translation>Tệp BMP kết thúc trước các điểm ảnh.</translation>
    </message>
    <message>
        <source>The BMP file ends in its headers, or they are of an unknown kind.</source>
        <translation>Tệp BMP kết thúc ngay trong phần đầu, hoặc phần đầu thuộc loại không rõ.</translation>
    </message>
    <message>
        <source>The BMP file is of an unsupported kind: compression %1 with %2 bits per pixel.</source>
        <translation>Tệp BMP thuộc loại không được hỗ trợ: kiểu nén %1 với %2 bit mỗi điểm ảnh.</translation>
    </message>
    <message>
        <source>The GIF file ends before its first pixel.</source>
        <translation>Tệp GIF kết thúc trước điểm ảnh đầu tiên.</translation>
    </message>
    <message>
        <source>The GIF file holds no picture, or ends before the first one.</source>
        <translation>Tệp GIF không có ảnh, hoặc kết thúc trước ảnh đầu tiên.</translation>
    </message>
    <message>
        <source>The JPEG file is lossless, hierarchical or of 12 bits, which the library for JPEG lacks.</source>
        <translation>Tệp JPEG là loại không mất dữ liệu, phân cấp hoặc 12 bit, mà thư viện JPEG không hỗ trợ.</translation>
    </message>
    <message>
        <source>The TIFF file is compressed by %1, which the library for TIFF lacks.</source>
        <translation>Tệp TIFF được nén bằng %1, mà thư viện TIFF không hỗ trợ.</translation>
    </message>
    <message>
        <source>A GIF image is at most 65535 pixels wide and high.</source>
        <translation>Ảnh GIF rộng và cao tối đa 65535 điểm ảnh.</translation>
    </message>
    <message>
        <source>A BMP file holds at most 4 GiB.</source>
        <translation>Tệp BMP chứa tối đa 4 GiB.</translation>
    </message>
    <message>
        <source>A PGM file holds shades of grey only, and the image has colours.</source>
        <translation>Tệp PGM chỉ chứa các sắc độ xám, còn ảnh có màu.</translation>
    </message>
    <message>
        <source>The colour profile or a text of the file is too long and was not kept.</source>
        <translation>Hồ sơ màu hoặc một đoạn văn bản của tệp quá dài nên không được giữ lại.</translation>
    </message>
    <message>
        <source>The image cannot be written as a %1 file: %2.</source>
        <translation>Không thể ghi ảnh thành tệp %1: %2.</translation>
    </message>
    <message>
        <source>The image cannot be written as a %1 file.</source>
        <translation>Không thể ghi ảnh thành tệp %1.</translation>
    </message>
    <message>
        <source>It is not a file of annotations.</source>
        <translation>Đây không phải tệp chú thích.</translation>
    </message>
    <message>
        <source>It is not a file of annotations of this format.</source>
        <translation>Đây không phải tệp chú thích của định dạng này.</translation>
    </message>
    <message>
        <source>It is of a later version, which this one cannot read.</source>
        <translation>Tệp thuộc phiên bản mới hơn mà phiên bản này không đọc được.</translation>
    </message>
    <message>
        <source>It was saved by a later version; this one only shows it.</source>
        <translation>Tệp được lưu bởi phiên bản mới hơn; phiên bản này chỉ hiển thị.</translation>
    </message>
    <message>
        <source>The annotations are of a later version, which this one cannot save.</source>
        <translation>Chú thích thuộc phiên bản mới hơn mà phiên bản này không lưu được.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is there already and is not overwritten. %2</source>
        <translation>&quot;%1&quot; đã có sẵn và không bị ghi đè. %2</translation>
    </message>
    <message>
        <source>It is damaged at byte %1.</source>
        <translation>Tệp bị hỏng tại byte %1.</translation>
    </message>
    <message>
        <source>It is nested too deeply.</source>
        <translation>Tệp lồng nhau quá sâu.</translation>
    </message>
    <message>
        <source>The file is larger than 64 MiB.</source>
        <translation>Tệp lớn hơn 64 MiB.</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>Không đọc được tệp.</translation>
    </message>
    <message>
        <source>The annotations take more than 64 MiB.</source>
        <translation>Chú thích chiếm hơn 64 MiB.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>Không đủ bộ nhớ.</translation>
    </message>
    <message>
        <source>The annotations were made for another version of this picture.</source>
        <translation>Chú thích được tạo cho một phiên bản khác của hình này.</translation>
    </message>
    <message>
        <source>It stays as it is: only the program that made it can scale it.</source>
        <translation>Giữ nguyên: chỉ chương trình đã tạo ra mới thu phóng được.</translation>
    </message>
    <message>
        <source>It stays as it is: scaled it would be too large.</source>
        <translation>Giữ nguyên: nếu thu phóng thì quá lớn.</translation>
    </message>
    <message>
        <source>The annotations were changed meanwhile.</source>
        <translation>Trong lúc đó chú thích đã thay đổi.</translation>
    </message>
    <message>
        <source>Cannot change the image.</source>
        <translation>Không thể thay đổi hình ảnh.</translation>
    </message>
    <message>
        <source>Another image is shown by now; the result was dropped.</source>
        <translation>Một hình ảnh khác đã được hiển thị; kết quả đã bị bỏ.</translation>
    </message>
    <message>
        <source>Another image is shown by now.</source>
        <translation>Một hình ảnh khác đã được hiển thị.</translation>
    </message>
    <message>
        <source>Open %1</source>
        <translation>Mở %1</translation>
    </message>
    <message>
        <source>Save %1</source>
        <translation>Lưu %1</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>Xoay</translation>
    </message>
    <message>
        <source>Change the image</source>
        <translation>Thay đổi hình ảnh</translation>
    </message>
    <message>
        <source>The page is empty or larger than the limit.</source>
        <translation>Trang trống hoặc lớn hơn giới hạn.</translation>
    </message>
    <message>
        <source>The page cannot be drawn.</source>
        <translation>Không thể vẽ trang.</translation>
    </message>
    <message>
        <source>There is not enough memory for the page.</source>
        <translation>Không đủ bộ nhớ cho trang.</translation>
    </message>
    <message>
        <source>The document could not be opened again.</source>
        <translation>Không thể mở lại tài liệu.</translation>
    </message>
    <message>
        <source>It took longer than the time limit.</source>
        <translation>Quá thời gian cho phép.</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>Đã bị hủy.</translation>
    </message>
    <message>
        <source>The program that reads documents ended unexpectedly.</source>
        <translation>Chương trình đọc tài liệu đã kết thúc bất ngờ.</translation>
    </message>
    <message>
        <source>The program that reads documents gave no valid answer.</source>
        <translation>Chương trình đọc tài liệu trả lời không hợp lệ.</translation>
    </message>
    <message>
        <source>The program vantor-pdf, which reads documents, cannot be started: %1. It is in the package vantor-pdf.</source>
        <translation>Không thể khởi động chương trình đọc tài liệu vantor-pdf: %1. Chương trình này nằm trong gói vantor-pdf.</translation>
    </message>
    <message>
        <source>Cannot copy the image.</source>
        <translation>Không thể sao chép ảnh.</translation>
    </message>
    <message>
        <source>Only the first %1 of %2 pages can be read.</source>
        <translation>Chỉ đọc được %1 trang đầu trong %2 trang.</translation>
    </message>
    <message>
        <source>The page is still being rendered.</source>
        <translation>Trang vẫn đang được vẽ.</translation>
    </message>
    <message>
        <source>Cannot compare the images.</source>
        <translation>Không thể so sánh các ảnh.</translation>
    </message>
    <message>
        <source>There are not two images to compare.</source>
        <translation>Không có đủ hai ảnh để so sánh.</translation>
    </message>
    <message>
        <source>The images differ in size: %1 and %2 pixels.</source>
        <translation>Hai ảnh khác kích thước: %1 và %2 điểm ảnh.</translation>
    </message>
    <message>
        <source>The images differ in the number of channels: %1 and %2.</source>
        <translation>Hai ảnh khác số kênh: %1 và %2.</translation>
    </message>
    <message>
        <source>The images differ in the bits per channel: %1 and %2.</source>
        <translation>Hai ảnh khác số bit mỗi kênh: %1 và %2.</translation>
    </message>
    <message>
        <source>Compare the images</source>
        <translation>So sánh các ảnh</translation>
    </message>
    <message>
        <source>Export %1</source>
        <translation>Xuất %1</translation>
    </message>
    <message>
        <source>Cannot save table %1.</source>
        <translation>Không thể lưu bảng %1.</translation>
    </message>
    <message>
        <source>Cannot save plot %1.</source>
        <translation>Không thể lưu biểu đồ %1.</translation>
    </message>
    <message>
        <source>The size of a pixel is not a number from 1e-30 to 1e9 units.</source>
        <translation>Kích thước điểm ảnh không phải là một số từ 1e-30 đến 1e9 đơn vị.</translation>
    </message>
    <message>
        <source>The name of the unit has no letters or more than 64 bytes.</source>
        <translation>Tên đơn vị không có chữ nào hoặc dài quá 64 byte.</translation>
    </message>
    <message>
        <source>The name of the unit holds control characters.</source>
        <translation>Tên đơn vị có ký tự điều khiển.</translation>
    </message>
    <message>
        <source>The origin is not a place from -1e9 to 1e9 pixels.</source>
        <translation>Gốc không phải là một vị trí từ -1e9 đến 1e9 điểm ảnh.</translation>
    </message>
    <message>
        <source>The way has no length.</source>
        <translation>Khoảng cách bằng không.</translation>
    </message>
    <message>
        <source>There are more than %1 components. A larger smallest area leaves some out.</source>
        <translation>Có hơn %1 thành phần. Diện tích nhỏ nhất lớn hơn sẽ bỏ bớt một số.</translation>
    </message>
    <message>
        <source>The image does not have that channel.</source>
        <translation>Ảnh không có kênh đó.</translation>
    </message>
</context>
<context>
    <name>MeasureTexts</name>
    <message>
        <source>Page</source>
        <translation>Trang</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Tên</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Loại</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Đơn vị</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>Điểm ảnh</translation>
    </message>
    <message>
        <source>Pixel area</source>
        <translation>Diện tích điểm ảnh</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>Diện tích</translation>
    </message>
    <message>
        <source>Perimeter</source>
        <translation>Chu vi</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Độ dài</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Góc</translation>
    </message>
    <message>
        <source>dx</source>
        <translation>dx</translation>
    </message>
    <message>
        <source>dy</source>
        <translation>dy</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Chiều rộng</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Chiều cao</translation>
    </message>
    <message>
        <source>Feret</source>
        <translation>Đường kính Feret</translation>
    </message>
    <message>
        <source>Minimum Feret</source>
        <translation>Feret nhỏ nhất</translation>
    </message>
    <message>
        <source>Feret angle</source>
        <translation>Góc Feret</translation>
    </message>
    <message>
        <source>Circularity</source>
        <translation>Độ tròn đều</translation>
    </message>
    <message>
        <source>Aspect</source>
        <translation>Tỉ lệ trục</translation>
    </message>
    <message>
        <source>Roundness</source>
        <translation>Độ tròn</translation>
    </message>
    <message>
        <source>Solidity</source>
        <translation>Độ đặc</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>Trung bình</translation>
    </message>
    <message>
        <source>Deviation</source>
        <translation>Độ lệch</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>Nhỏ nhất</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>Lớn nhất</translation>
    </message>
    <message>
        <source>Median</source>
        <translation>Trung vị</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Mốt</translation>
    </message>
    <message>
        <source>Integrated density</source>
        <translation>Mật độ tích phân</translation>
    </message>
    <message>
        <source>Sum</source>
        <translation>Tổng</translation>
    </message>
    <message>
        <source>Centroid X</source>
        <translation>Trọng tâm X</translation>
    </message>
    <message>
        <source>Centroid Y</source>
        <translation>Trọng tâm Y</translation>
    </message>
    <message>
        <source>Centre of mass X</source>
        <translation>Khối tâm X</translation>
    </message>
    <message>
        <source>Centre of mass Y</source>
        <translation>Khối tâm Y</translation>
    </message>
    <message>
        <source>Red mean</source>
        <translation>Đỏ trung bình</translation>
    </message>
    <message>
        <source>Red deviation</source>
        <translation>Đỏ độ lệch</translation>
    </message>
    <message>
        <source>Red minimum</source>
        <translation>Đỏ nhỏ nhất</translation>
    </message>
    <message>
        <source>Red maximum</source>
        <translation>Đỏ lớn nhất</translation>
    </message>
    <message>
        <source>Green mean</source>
        <translation>Lục trung bình</translation>
    </message>
    <message>
        <source>Green deviation</source>
        <translation>Lục độ lệch</translation>
    </message>
    <message>
        <source>Green minimum</source>
        <translation>Lục nhỏ nhất</translation>
    </message>
    <message>
        <source>Green maximum</source>
        <translation>Lục lớn nhất</translation>
    </message>
    <message>
        <source>Blue mean</source>
        <translation>Lam trung bình</translation>
    </message>
    <message>
        <source>Blue deviation</source>
        <translation>Lam độ lệch</translation>
    </message>
    <message>
        <source>Blue minimum</source>
        <translation>Lam nhỏ nhất</translation>
    </message>
    <message>
        <source>Blue maximum</source>
        <translation>Lam lớn nhất</translation>
    </message>
    <message>
        <source>Alpha mean</source>
        <translation>Alpha trung bình</translation>
    </message>
    <message>
        <source>Alpha deviation</source>
        <translation>Alpha độ lệch</translation>
    </message>
    <message>
        <source>Alpha minimum</source>
        <translation>Alpha nhỏ nhất</translation>
    </message>
    <message>
        <source>Alpha maximum</source>
        <translation>Alpha lớn nhất</translation>
    </message>
    <message>
        <source>Measurements</source>
        <translation>Số đo</translation>
    </message>
    <message>
        <source>All pages</source>
        <translation>Mọi trang</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Cột</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Sao chép</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Lưu...</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Kết quả</translation>
    </message>
    <message>
        <source>Shapes: %1</source>
        <translation>Số hình: %1</translation>
    </message>
    <message>
        <source>%1: N %2, mean %3, deviation %4, minimum %5, maximum %6</source>
        <translation>%1: N %2, trung bình %3, độ lệch %4, nhỏ nhất %5, lớn nhất %6</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Hình</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Các giá trị</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>Kênh</translation>
    </message>
    <message>
        <source>Logarithmic</source>
        <translation>Thang log</translation>
    </message>
    <message>
        <source>Whole image</source>
        <translation>Toàn ảnh</translation>
    </message>
    <message>
        <source>%1: N %2, mean %3, deviation %4, minimum %5, maximum %6, mode %7</source>
        <translation>%1: N %2, trung bình %3, độ lệch %4, nhỏ nhất %5, lớn nhất %6, mốt %7</translation>
    </message>
    <message>
        <source>Value %1: %2</source>
        <translation>Giá trị %1: %2</translation>
    </message>
    <message>
        <source>%1 %2: %3</source>
        <translation>%1 %2: %3</translation>
    </message>
    <message>
        <source>Select a ruler or an arrow.</source>
        <translation>Hãy chọn một thước hoặc mũi tên.</translation>
    </message>
    <message>
        <source>%1: length %2 %3</source>
        <translation>%1: độ dài %2 %3</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>Xám</translation>
    </message>
    <message>
        <source>Weighted grey</source>
        <translation>Xám có trọng số</translation>
    </message>
    <message>
        <source>Colors</source>
        <translation>Các màu</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Đỏ</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Lục</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Lam</translation>
    </message>
    <message>
        <source>Alpha</source>
        <translation>Alpha</translation>
    </message>
</context>
<context>
    <name>Preferences</name>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>&amp;Resolution of documents:</source>
        <translation>Độ phân &amp;giải của tài liệu:</translation>
    </message>
    <message>
        <source> dots per inch</source>
        <translation> dpi</translation>
    </message>
    <message>
        <source>&amp;Memory for pages of documents:</source>
        <translation>&amp;Bộ nhớ cho các trang tài liệu:</translation>
    </message>
    <message>
        <source>Memory for &amp;images read ahead:</source>
        <translation>Bộ nhớ cho ảnh đọc t&amp;rước:</translation>
    </message>
    <message>
        <source>&amp;Quality of JPEG files:</source>
        <translation>C&amp;hất lượng tệp JPEG:</translation>
    </message>
    <message>
        <source>&amp;Folder where dialogs start:</source>
        <translation>&amp;Thư mục khởi đầu của hộp thoại:</translation>
    </message>
    <message>
        <source>&amp;Language of texts to read:</source>
        <translation>&amp;Ngôn ngữ của chữ cần đọc:</translation>
    </message>
    <message>
        <source>Long work runs &amp;beside the window</source>
        <translation>Việc dài chạy &amp;song song với cửa sổ</translation>
    </message>
    <message>
        <source>Transparent images on a &amp;checkerboard</source>
        <translation>Ảnh trong suốt trên nền bàn &amp;cờ</translation>
    </message>
    <message>
        <source>&amp;Ask before unsaved work is lost</source>
        <translation>Hỏi trước khi mất việc ch&amp;ưa lưu</translation>
    </message>
    <message>
        <source>&amp;Save annotations by themselves</source>
        <translation>Tự động &amp;lưu chú thích</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Usage: %1</source>
        <translation>Cách dùng: %1</translation>
    </message>
    <message>
        <source>[options]</source>
        <translation>[tùy chọn]</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Tùy chọn:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Đối số:</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Thiếu giá trị sau &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Có giá trị thừa sau &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Tùy chọn &apos;%1&apos; không xác định.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Các tùy chọn không xác định: %1.</translation>
    </message>
</context>
<context>
    <name>QDockWidget</name>
    <message>
        <source>Close</source>
        <translation>Đóng</translation>
    </message>
    <message>
        <source>Closes the dock widget</source>
        <translation>Đóng bảng neo</translation>
    </message>
    <message>
        <source>Float</source>
        <translation>Tách rời</translation>
    </message>
    <message>
        <source>Undocks and re-attaches the dock widget</source>
        <translation>Tách hoặc gắn lại bảng neo</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>Close</source>
        <translation>Đóng</translation>
    </message>
</context>
<context>
    <name>SCommandLine</name>
    <message>
        <source>Shows, annotates and processes images and PDF documents.</source>
        <translation>Xem, chú thích và xử lý ảnh và tài liệu PDF.</translation>
    </message>
    <message>
        <source>layout</source>
        <translation>bố cục</translation>
    </message>
    <message>
        <source>Write a picture of the main window and quit.</source>
        <translation>Ghi ảnh của cửa sổ chính rồi thoát.</translation>
    </message>
    <message>
        <source>file</source>
        <translation>tệp</translation>
    </message>
    <message>
        <source>Keep the settings in this folder; it is made if need be.</source>
        <translation>Lưu thiết lập vào thư mục này; tạo thư mục nếu chưa có.</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>thư mục</translation>
    </message>
    <message>
        <source>Write the log files into this folder; it is made if need be.</source>
        <translation>Ghi tệp nhật ký vào thư mục này; tạo thư mục nếu chưa có.</translation>
    </message>
    <message>
        <source>Show the version and quit.</source>
        <translation>Hiện phiên bản rồi thoát.</translation>
    </message>
    <message>
        <source>Show this help and quit.</source>
        <translation>Hiện trợ giúp này rồi thoát.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no layout; use 1x1, 2x1 or 2x2.</source>
        <translation>&quot;%1&quot; không phải là bố cục hợp lệ; hãy dùng 1x1, 2x1 hoặc 2x2.</translation>
    </message>
    <message>
        <source>The option --%1 needs a name.</source>
        <translation>Tùy chọn --%1 cần có tên.</translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation>không thể ghi %1</translation>
    </message>
    <message>
        <source>Try &apos;vantor-viewer --help&apos;.</source>
        <translation>Hãy thử &apos;vantor-viewer --help&apos;.</translation>
    </message>
    <message>
        <source>Show one, two or four viewers (1x1, 2x1 or 2x2) and deal the files over them.</source>
        <translation>Hiện một, hai hoặc bốn khung xem (1x1, 2x1 hoặc 2x2) và chia các tệp cho chúng.</translation>
    </message>
    <message>
        <source>Images and documents, as paths or file:// addresses: up to four side by side, more as the list of one viewer.</source>
        <translation>Ảnh và tài liệu, là đường dẫn hoặc địa chỉ file://: tối đa bốn tệp cạnh nhau, nhiều hơn thì thành danh sách của một khung xem.</translation>
    </message>
</context>
<context>
    <name>ShapeKinds</name>
    <message>
        <source>&amp;Rectangle</source>
        <translation>Hình &amp;chữ nhật</translation>
    </message>
    <message>
        <source>&amp;Circle</source>
        <translation>Hình &amp;tròn</translation>
    </message>
    <message>
        <source>&amp;Ellipse</source>
        <translation>Hình &amp;elip</translation>
    </message>
    <message>
        <source>&amp;Polygon</source>
        <translation>Đ&amp;a giác</translation>
    </message>
    <message>
        <source>&amp;Arrow</source>
        <translation>&amp;Mũi tên</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>&amp;Văn bản</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>Hình chữ nhật</translation>
    </message>
    <message>
        <source>Circle</source>
        <translation>Hình tròn</translation>
    </message>
    <message>
        <source>Ellipse</source>
        <translation>Hình elip</translation>
    </message>
    <message>
        <source>Polygon</source>
        <translation>Đa giác</translation>
    </message>
    <message>
        <source>Arrow</source>
        <translation>Mũi tên</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Văn bản</translation>
    </message>
    <message>
        <source>Ruler</source>
        <translation>Thước đo</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Đường thẳng</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>Điểm</translation>
    </message>
    <message>
        <source>GeometryArray</source>
        <translation>Nhóm hình</translation>
    </message>
    <message>
        <source>&amp;Scale Bar</source>
        <translation>Thước tỷ &amp;lệ</translation>
    </message>
    <message>
        <source>ScaleBar</source>
        <translation>Thước tỷ lệ</translation>
    </message>
</context>
<context>
    <name>TextReading</name>
    <message>
        <source>&amp;Copy All</source>
        <translation>&amp;Sao chép tất cả</translation>
    </message>
    <message>
        <source>&amp;Save Text...</source>
        <translation>&amp;Lưu văn bản...</translation>
    </message>
    <message>
        <source>Save Text</source>
        <translation>Lưu văn bản</translation>
    </message>
    <message>
        <source>Text (*.txt);;All files (*)</source>
        <translation>Văn bản (*.txt);;Mọi tệp (*)</translation>
    </message>
    <message>
        <source>The text cannot be written to %1.</source>
        <translation>Không thể ghi văn bản vào %1.</translation>
    </message>
</context>
</TS>
