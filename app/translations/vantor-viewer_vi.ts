<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="vi" sourcelanguage="en">
<context>
    <name>CMainWindow</name>
    <message>
        <source>Tools</source>
        <translation>Công cụ</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>Trạng thái</translation>
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
        <source>%1 is running...</source>
        <translation>Đang chạy %1...</translation>
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
        <source>&amp;Status</source>
        <translation>Trạng thá&amp;i</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Nhật ký</translation>
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
    <name>CRecentFiles</name>
    <message>
        <source>&amp;Clear the List</source>
        <translation>&amp;Xóa danh sách</translation>
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
        <source>Show one, two or four viewers: 1x1, 2x1 or 2x2.</source>
        <translation>Hiện một, hai hoặc bốn khung xem: 1x1, 2x1 hoặc 2x2.</translation>
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
        <source>Images and documents: each in a viewer of its own, up to four.</source>
        <translation>Ảnh và tài liệu: mỗi tệp một khung xem, tối đa bốn khung.</translation>
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
</context>
</TS>
