<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="ko" sourcelanguage="en">
<context>
    <name>AnnotationDialogs</name>
    <message>
        <source>All files</source>
        <translation>모든 파일</translation>
    </message>
    <message>
        <source>Open Annotations</source>
        <translation>주석 열기</translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation>주석</translation>
    </message>
    <message>
        <source>Import Annotations</source>
        <translation>주석 가져오기</translation>
    </message>
    <message>
        <source>Save Annotations As</source>
        <translation>다른 이름으로 주석 저장</translation>
    </message>
    <message>
        <source>Export Annotations</source>
        <translation>주석 내보내기</translation>
    </message>
    <message>
        <source>A file in the format %1 will not say everything.</source>
        <translation>%1 형식의 파일에는 모든 내용이 담기지 않습니다.</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>내보내기(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>취소(&amp;C)</translation>
    </message>
    <message>
        <source>Save Annotations</source>
        <translation>주석 저장</translation>
    </message>
    <message>
        <source>The annotations in %1 were changed by another window or program.</source>
        <translation>다른 창이나 프로그램이 %1의 주석을 변경했습니다.</translation>
    </message>
    <message>
        <source>Overwriting the file loses those changes.</source>
        <translation>파일을 덮어쓰면 그 변경 사항이 사라집니다.</translation>
    </message>
    <message>
        <source>&amp;Overwrite</source>
        <translation>덮어쓰기(&amp;O)</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>다른 이름으로 저장(&amp;A)...</translation>
    </message>
    <message>
        <source>The annotations were made for an image of %1 x %2 pixels; this one has %3 x %4.</source>
        <translation>이 주석은 %1 x %2 픽셀 이미지에 만든 것입니다. 이 이미지는 %3 x %4입니다.</translation>
    </message>
    <message>
        <source>Scale fits them to this image, Keep shows them at the same pixels.</source>
        <translation>크기 조정은 이 이미지에 맞추고, 유지는 같은 픽셀에 표시합니다.</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <translation>크기 조정(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>유지(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Do Not Show</source>
        <translation>표시하지 않음(&amp;D)</translation>
    </message>
</context>
<context>
    <name>CAnnotationFiles</name>
    <message>
        <source>Cannot read the annotations in %1. %2 The file stays as it is.</source>
        <translation>%1의 주석을 읽을 수 없습니다. %2 파일은 그대로 둡니다.</translation>
    </message>
    <message>
        <source>The annotations cannot be saved beside their image, for it has no file.</source>
        <translation>이미지에 파일이 없어 그 옆에 주석을 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>%1 holds other annotations, which are not shown. It stays as it is.</source>
        <translation>%1에는 표시되지 않은 다른 주석이 있습니다. 그대로 둡니다.</translation>
    </message>
    <message>
        <source>The folder of %1 cannot be written. Its annotations are saved in %2.</source>
        <translation>%1의 폴더에 쓸 수 없습니다. 주석을 %2에 저장했습니다.</translation>
    </message>
    <message>
        <source>Cannot save the annotations in %1. %2</source>
        <translation>%1에 주석을 저장할 수 없습니다. %2</translation>
    </message>
    <message>
        <source>%1 was changed by another window or program. The annotations do not save themselves any more.</source>
        <translation>다른 창이나 프로그램이 %1을(를) 변경했습니다. 주석이 더 이상 자동으로 저장되지 않습니다.</translation>
    </message>
</context>
<context>
    <name>CDetailsDlg</name>
    <message>
        <source>Details</source>
        <translation>상세 정보</translation>
    </message>
    <message>
        <source>%1:</source>
        <translation>%1:</translation>
    </message>
    <message>
        <source>Copy &amp;Path</source>
        <translation>경로 복사(&amp;P)</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <translation>폴더에서 보기(&amp;F)</translation>
    </message>
</context>
<context>
    <name>CEmptyHint</name>
    <message>
        <source>Drop files here</source>
        <translation>여기에 파일을 놓으세요</translation>
    </message>
    <message>
        <source>Drop files here or press %1</source>
        <translation>여기에 파일을 놓거나 %1 키를 누르세요</translation>
    </message>
</context>
<context>
    <name>CJobBar</name>
    <message>
        <source>Running work</source>
        <translation>실행 중인 작업</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>외 %n개</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is running</source>
        <translation>%1 실행 중</translation>
    </message>
    <message>
        <source>Cancel: %1</source>
        <translation>취소: %1</translation>
    </message>
    <message>
        <source>Little Memory</source>
        <translation>메모리 부족</translation>
    </message>
    <message>
        <source>%1 may need %2 of memory; %3 are free.</source>
        <translation>%1 작업에 메모리 %2이(가) 필요할 수 있으며, 남은 메모리는 %3입니다.</translation>
    </message>
    <message>
        <source>&amp;Begin</source>
        <translation>시작(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>취소(&amp;C)</translation>
    </message>
</context>
<context>
    <name>CLogPanel</name>
    <message>
        <source>All messages</source>
        <translation>모든 메시지</translation>
    </message>
    <message>
        <source>Without the details</source>
        <translation>세부 사항 제외</translation>
    </message>
    <message>
        <source>Warnings and errors</source>
        <translation>경고와 오류</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>오류</translation>
    </message>
    <message>
        <source>Messages that are shown:</source>
        <translation>표시할 메시지:</translation>
    </message>
    <message>
        <source>Messages that are shown</source>
        <translation>표시할 메시지</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Tools</source>
        <translation>도구</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>속성</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>로그</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 저장됨</translation>
    </message>
    <message>
        <source>Settings cannot be kept in the folder %1; they last until the program ends.</source>
        <translation>%1 폴더에 설정을 저장할 수 없습니다. 설정은 프로그램을 끝낼 때까지만 유지됩니다.</translation>
    </message>
    <message>
        <source>Log files cannot be written in the folder %1.</source>
        <translation>%1 폴더에 로그 파일을 쓸 수 없습니다.</translation>
    </message>
    <message>
        <source>Globe</source>
        <translation>지구본</translation>
    </message>
    <message>
        <source>About Vantor</source>
        <translation>Vantor 정보</translation>
    </message>
    <message>
        <source>Vantor %1

An example host of libVantorCommon: components for viewing, annotating and processing raster images.</source>
        <translation>Vantor %1

libVantorCommon의 예제 프로그램입니다. libVantorCommon은 래스터 이미지를 보고, 주석을 달고, 처리하는 구성 요소입니다.</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>파일(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>열기(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Add Images...</source>
        <translation>이미지 추가(&amp;A)...</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>최근 파일 열기(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>다른 이름으로 저장(&amp;S)...</translation>
    </message>
    <message>
        <source>&amp;Close Image</source>
        <translation>이미지 닫기(&amp;C)</translation>
    </message>
    <message>
        <source>Close A&amp;ll Images</source>
        <translation>모든 이미지 닫기(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>끝내기(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>편집(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>실행 취소(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>다시 실행(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>복사(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>붙여넣기(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>삭제(&amp;D)</translation>
    </message>
    <message>
        <source>Rotate &amp;Left</source>
        <translation>왼쪽으로 회전(&amp;L)</translation>
    </message>
    <message>
        <source>Rotate Ri&amp;ght</source>
        <translation>오른쪽으로 회전(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;One Viewer (1x1)</source>
        <translation>뷰어 1개 (1x1)(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Two Viewers (2x1)</source>
        <translation>뷰어 2개 (2x1)(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Four Viewers (2x2)</source>
        <translation>뷰어 4개 (2x2)(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>보기(&amp;V)</translation>
    </message>
    <message>
        <source>Fit to &amp;Window</source>
        <translation>창에 맞춤(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Go To...</source>
        <translation>위치로 이동(&amp;G)...</translation>
    </message>
    <message>
        <source>&amp;Previous Image</source>
        <translation>이전 이미지(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Next Image</source>
        <translation>다음 이미지(&amp;N)</translation>
    </message>
    <message>
        <source>&amp;2D View</source>
        <translation>2D 보기(&amp;2)</translation>
    </message>
    <message>
        <source>&amp;3D View</source>
        <translation>3D 보기(&amp;3)</translation>
    </message>
    <message>
        <source>&amp;Docks</source>
        <translation>도킹 창(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Appearance</source>
        <translation>모양(&amp;A)</translation>
    </message>
    <message>
        <source>As the &amp;Desktop</source>
        <translation>데스크톱 설정 따르기(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>밝게(&amp;L)</translation>
    </message>
    <message>
        <source>Dar&amp;k</source>
        <translation>어둡게(&amp;K)</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>도구(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Median Filter...</source>
        <translation>중앙값 필터(&amp;M)...</translation>
    </message>
    <message>
        <source>&amp;Sobel Filter...</source>
        <translation>소벨 필터(&amp;S)...</translation>
    </message>
    <message>
        <source>&amp;OCR...</source>
        <translation>문자 인식 OCR(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Capture the Screen</source>
        <translation>화면 캡처(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Globe</source>
        <translation>지구본(&amp;G)</translation>
    </message>
    <message>
        <source>S&amp;elect</source>
        <translation>선택(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Pan</source>
        <translation>화면 이동(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Ruler</source>
        <translation>눈금자(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Draw</source>
        <translation>그리기(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>설정(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>환경 설정(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>도움말(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Shortcuts</source>
        <translation>단축키(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;About Vantor</source>
        <translation>Vantor 정보(&amp;A)</translation>
    </message>
    <message>
        <source>Tool Bar</source>
        <translation>도구 모음</translation>
    </message>
    <message>
        <source>The 3D view needs OpenGL 3.3, which this system does not offer.</source>
        <translation>3D 보기에는 이 시스템이 제공하지 않는 OpenGL 3.3이 필요합니다.</translation>
    </message>
    <message>
        <source>Ne&amp;xt Pane</source>
        <translation>다음 창(&amp;X)</translation>
    </message>
    <message>
        <source>Pre&amp;vious Pane</source>
        <translation>이전 창(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Properties</source>
        <translation>속성(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>로그(&amp;L)</translation>
    </message>
    <message>
        <source>Flip &amp;Horizontally</source>
        <translation>좌우 뒤집기(&amp;H)</translation>
    </message>
    <message>
        <source>Flip &amp;Vertically</source>
        <translation>상하 뒤집기(&amp;V)</translation>
    </message>
    <message>
        <source>Cr&amp;op to the Shape</source>
        <translation>도형에 맞춰 자르기(&amp;O)</translation>
    </message>
    <message>
        <source>Grey&amp;scale</source>
        <translation>회색조로 변환(&amp;S)</translation>
    </message>
    <message>
        <source>Gaussian &amp;Blur...</source>
        <translation>가우시안 흐림(&amp;B)...</translation>
    </message>
    <message>
        <source>&amp;Unsharp Mask...</source>
        <translation>언샤프 마스크(&amp;U)...</translation>
    </message>
    <message>
        <source>&amp;Threshold...</source>
        <translation>임계값(&amp;T)...</translation>
    </message>
    <message>
        <source>Brightness, Co&amp;ntrast, Gamma...</source>
        <translation>밝기, 대비, 감마(&amp;N)...</translation>
    </message>
    <message>
        <source>&amp;Invert...</source>
        <translation>색 반전(&amp;I)...</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>종류</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>위치</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>크기</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>잠김</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>표시</translation>
    </message>
    <message>
        <source>Annotations</source>
        <translation>주석</translation>
    </message>
    <message>
        <source>&amp;Annotations</source>
        <translation>주석(&amp;A)</translation>
    </message>
    <message>
        <source>Copy &amp;with Annotations</source>
        <translation>주석과 함께 복사(&amp;W)</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>모두 선택(&amp;A)</translation>
    </message>
    <message>
        <source>Dupl&amp;icate</source>
        <translation>복제(&amp;I)</translation>
    </message>
    <message>
        <source>Export Picture</source>
        <translation>그림 내보내기</translation>
    </message>
    <message>
        <source>Exported %1</source>
        <translation>내보냄: %1</translation>
    </message>
    <message>
        <source>The picture cannot be exported. %1</source>
        <translation>그림을 내보낼 수 없습니다. %1</translation>
    </message>
    <message>
        <source>The picture cannot be copied: there is not enough memory.</source>
        <translation>그림을 복사할 수 없습니다. 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>저장(&amp;V)</translation>
    </message>
    <message>
        <source>Open A&amp;nnotations...</source>
        <translation>주석 열기(&amp;N)...</translation>
    </message>
    <message>
        <source>Save Anno&amp;tations As...</source>
        <translation>다른 이름으로 주석 저장(&amp;T)...</translation>
    </message>
    <message>
        <source>&amp;Import Annotations...</source>
        <translation>주석 가져오기(&amp;I)...</translation>
    </message>
    <message>
        <source>&amp;Export Annotations...</source>
        <translation>주석 내보내기(&amp;E)...</translation>
    </message>
    <message>
        <source>&amp;Save Annotations by Themselves</source>
        <translation>주석 자동 저장(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Reopen at the Start What Was Open</source>
        <translation>시작할 때 열려 있던 것 다시 열기(&amp;R)</translation>
    </message>
    <message>
        <source>Cannot read the annotations in %1. %2</source>
        <translation>%1의 주석을 읽을 수 없습니다. %2</translation>
    </message>
    <message>
        <source>%1 has no annotations of this image.</source>
        <translation>%1에는 이 이미지의 주석이 없습니다.</translation>
    </message>
    <message>
        <source>Cannot save the annotations in %1. %2</source>
        <translation>%1에 주석을 저장할 수 없습니다. %2</translation>
    </message>
    <message>
        <source>Close an image to make room for %1.</source>
        <translation>%1을(를) 열 자리를 만들려면 이미지를 하나 닫으십시오.</translation>
    </message>
    <message>
        <source>The image of some annotations is gone. They are in %1.</source>
        <translation>일부 주석의 이미지가 없어졌습니다. 주석은 %1에 있습니다.</translation>
    </message>
    <message>
        <source>R&amp;estore Cleared Annotations</source>
        <translation>사라진 주석 되돌리기(&amp;E)</translation>
    </message>
    <message numerus="yes">
        <source>%n annotation(s) went with the old image. Edit &gt; Restore Cleared Annotations brings them back.</source>
        <translation>
            <numerusform>이전 이미지와 함께 주석 %n개가 사라졌습니다. 편집 &gt; 사라진 주석 되돌리기로 되돌릴 수 있습니다.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n annotation(s) of a kind that is unknown here did not go along with the image. They keep their old places in the file.</source>
        <translation>
            <numerusform>여기에서 알 수 없는 종류의 주석 %n개는 이미지를 따라가지 않았습니다. 파일에서 예전 위치를 유지합니다.</numerusform>
        </translation>
    </message>
    <message>
        <source>Page</source>
        <translation>페이지</translation>
    </message>
    <message>
        <source>Vantor&apos;s own code is under the MIT licence. It uses Qt 5 (LGPL 3), poppler (GPL 2 or 3), Tesseract and Leptonica (Apache 2.0, BSD-like), libtiff (BSD-like), giflib (MIT) and Highway (Apache 2.0 or BSD). Only the separate program vantor-pdf contains poppler; as a whole it is under the GPL.</source>
        <translation>Vantor 자체의 코드는 MIT 라이선스를 따릅니다. Qt 5(LGPL 3), poppler(GPL 2 또는 3), Tesseract와 Leptonica(Apache 2.0, BSD 계열), libtiff(BSD 계열), giflib(MIT), Highway(Apache 2.0 또는 BSD)를 사용합니다. poppler는 별도의 프로그램 vantor-pdf에만 들어 있으며, 이 프로그램 전체는 GPL을 따릅니다.</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>확대/축소(&amp;Z)</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>확대(&amp;I)</translation>
    </message>
    <message>
        <source>Enlarge the image about the middle of the view</source>
        <translation>보기의 가운데를 중심으로 이미지를 확대합니다</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>축소(&amp;O)</translation>
    </message>
    <message>
        <source>Make the image smaller about the middle of the view</source>
        <translation>보기의 가운데를 중심으로 이미지를 축소합니다</translation>
    </message>
    <message>
        <source>&amp;Actual Size</source>
        <translation>실제 크기(&amp;A)</translation>
    </message>
    <message>
        <source>One pixel of the screen for each pixel of the image: 100 %</source>
        <translation>이미지 픽셀 하나에 화면 픽셀 하나: 100 %</translation>
    </message>
    <message>
        <source>Fit &amp;Width</source>
        <translation>너비에 맞춤(&amp;W)</translation>
    </message>
    <message>
        <source>Make the image as wide as the view</source>
        <translation>이미지를 보기의 너비에 맞춥니다</translation>
    </message>
    <message>
        <source>To a &amp;Rectangle</source>
        <translation>사각형으로 확대(&amp;R)</translation>
    </message>
    <message>
        <source>Drag a rectangle; what it encloses fills the view</source>
        <translation>사각형을 끌어서 그리면 그 안이 보기를 채웁니다</translation>
    </message>
    <message>
        <source>To the &amp;Shape</source>
        <translation>도형으로 확대(&amp;S)</translation>
    </message>
    <message>
        <source>Show the selected annotations as large as possible</source>
        <translation>선택한 주석을 가능한 한 크게 보여 줍니다</translation>
    </message>
    <message>
        <source>&amp;Type a Zoom...</source>
        <translation>배율 입력(&amp;T)...</translation>
    </message>
    <message>
        <source>Type the zoom in the status bar</source>
        <translation>상태 표시줄에 배율을 입력합니다</translation>
    </message>
    <message>
        <source>&amp;Minimap</source>
        <translation>미니맵(&amp;M)</translation>
    </message>
    <message>
        <source>Show the whole image in a corner while a part of it is in view</source>
        <translation>이미지의 일부만 보일 때 구석에 전체 이미지를 보여 줍니다</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no zoom. Type a number of percent, such as 150.</source>
        <translation>&quot;%1&quot;은(는) 배율이 아닙니다. 150과 같은 퍼센트 값을 입력하십시오.</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>비교(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Link Viewers</source>
        <translation>뷰어 연결(&amp;L)</translation>
    </message>
    <message>
        <source>Zoom and pan all shown viewers together, with a cross where the mouse is</source>
        <translation>보이는 모든 뷰어를 함께 확대하고 이동하며, 마우스 위치에 십자를 표시합니다</translation>
    </message>
    <message>
        <source>&amp;Show Other Viewer</source>
        <translation>다른 뷰어 보기(&amp;S)</translation>
    </message>
    <message>
        <source>Show the next viewer&apos;s image in this one, at the same place; the key X does it while it is held</source>
        <translation>다음 뷰어의 이미지를 이 뷰어의 같은 위치에 보여 줍니다. X 키를 누르고 있는 동안에도 됩니다</translation>
    </message>
    <message>
        <source>&amp;Difference</source>
        <translation>차이(&amp;D)</translation>
    </message>
    <message>
        <source>With Viewer &amp;%1</source>
        <translation>뷰어 &amp;%1과(와)</translation>
    </message>
    <message>
        <source>Add the difference of the two images to this viewer&apos;s list</source>
        <translation>두 이미지의 차이를 이 뷰어의 목록에 추가합니다</translation>
    </message>
    <message>
        <source>There is no image in %1.</source>
        <translation>%1에 이미지가 없습니다.</translation>
    </message>
    <message>
        <source>F&amp;irst Image</source>
        <translation>첫 이미지(&amp;I)</translation>
    </message>
    <message>
        <source>La&amp;st Image</source>
        <translation>마지막 이미지(&amp;S)</translation>
    </message>
    <message>
        <source>F&amp;ull Screen</source>
        <translation>전체 화면(&amp;U)</translation>
    </message>
    <message>
        <source>Slide S&amp;how</source>
        <translation>슬라이드 쇼(&amp;H)</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>폴더 열기(&amp;F)...</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>폴더 열기</translation>
    </message>
    <message>
        <source>&amp;Move to Trash...</source>
        <translation>휴지통으로 이동(&amp;M)...</translation>
    </message>
    <message>
        <source>Restore from Tras&amp;h</source>
        <translation>휴지통에서 복원(&amp;H)</translation>
    </message>
    <message>
        <source>Move to Trash</source>
        <translation>휴지통으로 이동</translation>
    </message>
    <message>
        <source>Move &quot;%1&quot; and its annotations to the trash?</source>
        <translation>&quot;%1&quot;과(와) 그 주석을 휴지통으로 옮길까요?</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be moved to the trash.</source>
        <translation>&quot;%1&quot;을(를) 휴지통으로 옮길 수 없습니다.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be restored.</source>
        <translation>&quot;%1&quot;을(를) 복원할 수 없습니다.</translation>
    </message>
    <message>
        <source>&amp;Results</source>
        <translation>결과(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Histogram</source>
        <translation>히스토그램(&amp;H)</translation>
    </message>
    <message>
        <source>Pro&amp;file</source>
        <translation>프로파일(&amp;F)</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>Pag&amp;e...</source>
        <translation>페이지(&amp;E)...</translation>
    </message>
    <message>
        <source>Type the number of a page or an image in the status bar</source>
        <translation>상태 표시줄에 페이지나 이미지의 번호를 입력합니다</translation>
    </message>
    <message>
        <source>Wheel Tu&amp;rns Pages</source>
        <translation>휠로 페이지 넘기기(&amp;R)</translation>
    </message>
    <message>
        <source>The wheel scrolls and goes on to the next page at the edge; with Ctrl it zooms</source>
        <translation>휠로 스크롤하고 가장자리에서 다음 페이지로 넘어갑니다. Ctrl과 함께 쓰면 확대/축소합니다</translation>
    </message>
    <message>
        <source>There is no page &quot;%1&quot;. Type a number from 1 to %2.</source>
        <translation>&quot;%1&quot; 페이지가 없습니다. 1에서 %2 사이의 숫자를 입력하세요.</translation>
    </message>
    <message>
        <source>E&amp;xport Picture...</source>
        <translation>그림 내보내기(&amp;X)...</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>인쇄(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;Details...</source>
        <translation>상세 정보(&amp;D)...</translation>
    </message>
    <message>
        <source>Capture after &amp;3 Seconds</source>
        <translation>3초 후 캡처(&amp;3)</translation>
    </message>
    <message>
        <source>Capture after &amp;5 Seconds</source>
        <translation>5초 후 캡처(&amp;5)</translation>
    </message>
    <message>
        <source>Capture the &amp;Whole Screen</source>
        <translation>전체 화면 캡처(&amp;W)</translation>
    </message>
    <message>
        <source>The picture cannot be printed: there is not enough memory.</source>
        <translation>그림을 인쇄할 수 없습니다. 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>Viewer</source>
        <translation>뷰어</translation>
    </message>
    <message>
        <source>Set Sc&amp;ale...</source>
        <translation>축척 설정(&amp;A)...</translation>
    </message>
    <message>
        <source>&amp;Find Particles...</source>
        <translation>입자 찾기(&amp;F)...</translation>
    </message>
</context>
<context>
    <name>CMeasureDocks</name>
    <message>
        <source>Results</source>
        <translation>결과</translation>
    </message>
    <message>
        <source>Histogram</source>
        <translation>히스토그램</translation>
    </message>
    <message>
        <source>Profile</source>
        <translation>프로파일</translation>
    </message>
</context>
<context>
    <name>CMessageBar</name>
    <message>
        <source>Messages</source>
        <translation>메시지</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>경고</translation>
    </message>
    <message>
        <source>Close the message</source>
        <translation>메시지 닫기</translation>
    </message>
    <message numerus="yes">
        <source>%n more in the log.</source>
        <translation>
            <numerusform>로그에 %n개가 더 있습니다.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>CPageField</name>
    <message>
        <source>Page</source>
        <translation>페이지</translation>
    </message>
    <message>
        <source>Page or image: click to type the number of another one</source>
        <translation>페이지 또는 이미지: 클릭하여 다른 번호를 입력하세요</translation>
    </message>
</context>
<context>
    <name>CPreferencesPage</name>
    <message>
        <source>&amp;Open the Documents Again</source>
        <translation>문서 다시 열기(&amp;O)</translation>
    </message>
    <message>
        <source>Documents that are open keep their resolution until then</source>
        <translation>열려 있는 문서는 그때까지 해상도를 유지합니다</translation>
    </message>
    <message>
        <source>Where the program was started</source>
        <translation>프로그램이 시작된 곳</translation>
    </message>
    <message>
        <source>C&amp;hoose...</source>
        <translation>선택(&amp;H)...</translation>
    </message>
</context>
<context>
    <name>CPrinting</name>
    <message>
        <source>Print</source>
        <translation>인쇄</translation>
    </message>
    <message>
        <source>&amp;True Size</source>
        <translation>실제 크기(&amp;T)</translation>
    </message>
    <message>
        <source>Print at the size that the file tells, or at 96 pixels per inch; otherwise as large as the paper</source>
        <translation>파일에 적힌 크기나 인치당 96픽셀로 인쇄합니다. 아니면 용지 크기에 맞춥니다</translation>
    </message>
</context>
<context>
    <name>CRecentFiles</name>
    <message>
        <source>&amp;Clear the List</source>
        <translation>목록 지우기(&amp;C)</translation>
    </message>
</context>
<context>
    <name>CRecoveryBar</name>
    <message>
        <source>an image without a file</source>
        <translation>파일이 없는 이미지</translation>
    </message>
    <message>
        <source>Unsaved annotations</source>
        <translation>저장하지 않은 주석</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>정보</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>복원</translation>
    </message>
    <message>
        <source>Open the images and show their annotations again</source>
        <translation>이미지를 열고 주석을 다시 표시합니다</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>버리기</translation>
    </message>
    <message>
        <source>Give these annotations up</source>
        <translation>이 주석들을 버립니다</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>나중에</translation>
    </message>
    <message>
        <source>Ask again at the next start</source>
        <translation>다음에 시작할 때 다시 묻습니다</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>외 %n개</numerusform>
        </translation>
    </message>
    <message>
        <source>The program ended before the annotations of these images were saved: %1.</source>
        <translation>다음 이미지의 주석을 저장하기 전에 프로그램이 끝났습니다: %1.</translation>
    </message>
</context>
<context>
    <name>CScaleDlg</name>
    <message>
        <source>Set Scale</source>
        <translation>축척 설정</translation>
    </message>
    <message>
        <source>&amp;Distance in pixels</source>
        <translation>픽셀 단위 거리(&amp;D)</translation>
    </message>
    <message>
        <source>Known &amp;length</source>
        <translation>알려진 길이(&amp;L)</translation>
    </message>
    <message>
        <source>&amp;Unit</source>
        <translation>단위(&amp;U)</translation>
    </message>
    <message>
        <source>Pixel &amp;width in units</source>
        <translation>단위로 나타낸 픽셀 너비(&amp;W)</translation>
    </message>
    <message>
        <source>Pixel &amp;height in units</source>
        <translation>단위로 나타낸 픽셀 높이(&amp;H)</translation>
    </message>
    <message>
        <source>Origin &amp;x in pixels</source>
        <translation>픽셀 단위 원점 x(&amp;X)</translation>
    </message>
    <message>
        <source>Origin &amp;y in pixels</source>
        <translation>픽셀 단위 원점 y(&amp;Y)</translation>
    </message>
    <message>
        <source>&amp;Pixels Again</source>
        <translation>다시 픽셀로(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;From the File</source>
        <translation>파일에서(&amp;F)</translation>
    </message>
</context>
<context>
    <name>CShortcutsDlg</name>
    <message>
        <source>Shortcuts</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>동작</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>키</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>메뉴</translation>
    </message>
    <message>
        <source>In a viewer</source>
        <translation>뷰어 안에서</translation>
    </message>
    <message>
        <source>Zoom about the mouse</source>
        <translation>마우스 위치를 중심으로 확대/축소</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>휠</translation>
    </message>
    <message>
        <source>Pan, in panning mode</source>
        <translation>화면 이동 모드에서 화면 이동</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>끌기</translation>
    </message>
    <message>
        <source>Select, move or resize an annotation</source>
        <translation>주석 선택, 이동, 크기 조절</translation>
    </message>
    <message>
        <source>Click, drag it or a handle</source>
        <translation>클릭, 주석이나 조절점 끌기</translation>
    </message>
    <message>
        <source>Delete the selected annotations</source>
        <translation>선택한 주석 삭제</translation>
    </message>
    <message>
        <source>Delete or Backspace</source>
        <translation>Delete 또는 Backspace</translation>
    </message>
    <message>
        <source>Back to selecting</source>
        <translation>선택 모드로 돌아가기</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Close a polygon</source>
        <translation>다각형 닫기</translation>
    </message>
    <message>
        <source>Click at its first corner</source>
        <translation>첫 꼭짓점 클릭</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>컨텍스트 메뉴</translation>
    </message>
    <message>
        <source>Right click or Menu key</source>
        <translation>오른쪽 클릭 또는 메뉴 키</translation>
    </message>
    <message>
        <source>Turn the 3D view</source>
        <translation>3D 보기 회전</translation>
    </message>
    <message>
        <source>Pan, in every mode</source>
        <translation>모든 모드에서 이동</translation>
    </message>
    <message>
        <source>Arrow keys</source>
        <translation>화살표 키</translation>
    </message>
    <message>
        <source>Previous and next image</source>
        <translation>이전 및 다음 이미지</translation>
    </message>
    <message>
        <source>PgUp and PgDn</source>
        <translation>PgUp과 PgDn</translation>
    </message>
    <message>
        <source>Drag with the middle button or Space</source>
        <translation>가운데 단추 또는 Space와 함께 끌기</translation>
    </message>
    <message>
        <source>Pan, or previous and next image</source>
        <translation>이동, 또는 이전 및 다음 이미지</translation>
    </message>
    <message>
        <source>Show the next viewer&apos;s image</source>
        <translation>다음 뷰어의 이미지 보기</translation>
    </message>
    <message>
        <source>Hold X</source>
        <translation>X를 누르고 있기</translation>
    </message>
</context>
<context>
    <name>CShortcutsPage</name>
    <message>
        <source>Shortcuts</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>동작</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>단축키</translation>
    </message>
    <message>
        <source>&amp;Keys of the action:</source>
        <translation>동작의 단축키(&amp;K):</translation>
    </message>
    <message>
        <source>&amp;Default</source>
        <translation>기본값(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;All Defaults</source>
        <translation>모두 기본값(&amp;A)</translation>
    </message>
    <message>
        <source>These keys belong to &quot;%1&quot;.</source>
        <translation>이 키는 &quot;%1&quot;에 쓰이고 있습니다.</translation>
    </message>
</context>
<context>
    <name>CUnsavedWork</name>
    <message>
        <source>annotations of an image without a file</source>
        <translation>파일이 없는 이미지의 주석</translation>
    </message>
    <message>
        <source>%1: annotations</source>
        <translation>%1: 주석</translation>
    </message>
    <message>
        <source>a captured or pasted image</source>
        <translation>캡처하거나 붙여 넣은 이미지</translation>
    </message>
    <message>
        <source>%1: the image was changed</source>
        <translation>%1: 이미지가 바뀜</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>외 %n개</numerusform>
        </translation>
    </message>
    <message>
        <source>Unsaved Work</source>
        <translation>저장하지 않은 작업</translation>
    </message>
    <message>
        <source>Save what would be lost?</source>
        <translation>사라질 내용을 저장하시겠습니까?</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>저장(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>버리기(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>취소(&amp;C)</translation>
    </message>
</context>
<context>
    <name>CZoomField</name>
    <message>
        <source>Zoom</source>
        <translation>배율</translation>
    </message>
    <message>
        <source>Zoom: click to type another one</source>
        <translation>배율: 클릭하여 다른 값을 입력</translation>
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
        <translation>이름</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>폴더</translation>
    </message>
    <message>
        <source>File size</source>
        <translation>파일 크기</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n byte(s))</source>
        <translation>
            <numerusform>%1 (%n바이트)</numerusform>
        </translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>수정한 날짜</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>형식</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>크기</translation>
    </message>
    <message>
        <source>%1 x %2 pixels</source>
        <translation>%1 x %2 픽셀</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>채널</translation>
    </message>
    <message numerus="yes">
        <source>%n of %1 bits</source>
        <translation>
            <numerusform>%n개, 각 %1비트</numerusform>
        </translation>
    </message>
    <message>
        <source>Page size</source>
        <translation>페이지 크기</translation>
    </message>
    <message>
        <source>%1 x %2 mm</source>
        <translation>%1 x %2 mm</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>해상도</translation>
    </message>
    <message>
        <source>%1 dots per inch</source>
        <translation>인치당 %1도트</translation>
    </message>
    <message>
        <source>Color profile</source>
        <translation>색 프로필</translation>
    </message>
    <message>
        <source>In the file, not applied</source>
        <translation>파일에 있음, 적용 안 됨</translation>
    </message>
</context>
<context>
    <name>LibraryTexts</name>
    <message>
        <source>Cannot load image %1.</source>
        <translation>이미지 %1을(를) 불러올 수 없습니다.</translation>
    </message>
    <message>
        <source>Cannot load pdf file %1.</source>
        <translation>PDF 파일 %1을(를) 불러올 수 없습니다.</translation>
    </message>
    <message>
        <source>Cannot load all of pdf file %1.</source>
        <translation>PDF 파일 %1을(를) 끝까지 불러올 수 없습니다.</translation>
    </message>
    <message>
        <source>Cannot save image %1.</source>
        <translation>이미지 %1을(를) 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Cannot paste %1.</source>
        <translation>%1을(를) 붙여넣을 수 없습니다.</translation>
    </message>
    <message>
        <source>Cannot rotate the image.</source>
        <translation>이미지를 회전할 수 없습니다.</translation>
    </message>
    <message>
        <source>There is no such file.</source>
        <translation>그런 파일이 없습니다.</translation>
    </message>
    <message>
        <source>It is not a regular file.</source>
        <translation>일반 파일이 아닙니다.</translation>
    </message>
    <message>
        <source>Reading the file is not permitted.</source>
        <translation>파일을 읽을 권한이 없습니다.</translation>
    </message>
    <message>
        <source>The file cannot be opened: %1.</source>
        <translation>파일을 열 수 없습니다: %1.</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>파일이 비어 있습니다.</translation>
    </message>
    <message>
        <source>It is not an image in BMP, JPEG, PNG, GIF, TIFF, PPM, PGM or PBM format.</source>
        <translation>BMP, JPEG, PNG, GIF, TIFF, PPM, PGM, PBM 형식의 이미지가 아닙니다.</translation>
    </message>
    <message>
        <source>The %1 file is damaged, too large or of an unsupported kind.</source>
        <translation>%1 파일이 손상되었거나 너무 크거나 지원하지 않는 종류입니다.</translation>
    </message>
    <message>
        <source>The %1 file is too short for the size that it claims.</source>
        <translation>%1 파일이 스스로 밝힌 크기에 비해 너무 짧습니다.</translation>
    </message>
    <message>
        <source>The picture of the %1 file is empty or larger than the limit.</source>
        <translation>%1 파일의 그림이 비어 있거나 한도보다 큽니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the image.</source>
        <translation>이미지에 필요한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the copy.</source>
        <translation>사본에 필요한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the filter.</source>
        <translation>필터에 필요한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the rotated image.</source>
        <translation>회전한 이미지에 필요한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>There is not enough memory to save the image.</source>
        <translation>이미지를 저장하는 데 필요한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>Out of memory.</source>
        <translation>메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>The rotated image would be too large.</source>
        <translation>회전한 이미지가 너무 커집니다.</translation>
    </message>
    <message>
        <source>The name must end in bmp, jpg, jpeg, png, tif, tiff, ppm, pgm or gif.</source>
        <translation>이름은 bmp, jpg, jpeg, png, tif, tiff, ppm, pgm, gif 중 하나로 끝나야 합니다.</translation>
    </message>
    <message>
        <source>Only images of 8 bits per channel can be saved.</source>
        <translation>채널당 8비트인 이미지만 저장할 수 있습니다.</translation>
    </message>
    <message>
        <source>Only images of 8 bits per channel can be filtered.</source>
        <translation>채널당 8비트인 이미지에만 필터를 적용할 수 있습니다.</translation>
    </message>
    <message>
        <source>The file or its folder cannot be written.</source>
        <translation>파일이나 그 폴더에 쓸 수 없습니다.</translation>
    </message>
    <message>
        <source>The file could not be written whole.</source>
        <translation>파일을 끝까지 쓸 수 없었습니다.</translation>
    </message>
    <message>
        <source>The file is missing, no regular file, or must not be read.</source>
        <translation>파일이 없거나 일반 파일이 아니거나 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>The document is too large for the memory.</source>
        <translation>문서가 메모리에 비해 너무 큽니다.</translation>
    </message>
    <message>
        <source>The document needs a password.</source>
        <translation>문서에 암호가 필요합니다.</translation>
    </message>
    <message>
        <source>The password is wrong.</source>
        <translation>암호가 틀렸습니다.</translation>
    </message>
    <message>
        <source>It is not a PDF document with pages, or it is damaged.</source>
        <translation>쪽이 있는 PDF 문서가 아니거나 손상되었습니다.</translation>
    </message>
    <message>
        <source>Page %1 of %2 cannot be rendered.</source>
        <translation>%2쪽 중 %1쪽을 그릴 수 없습니다.</translation>
    </message>
    <message>
        <source>No source viewer is chosen.</source>
        <translation>원본 뷰어를 선택하지 않았습니다.</translation>
    </message>
    <message>
        <source>The source viewer shows no image.</source>
        <translation>원본 뷰어에 이미지가 없습니다.</translation>
    </message>
    <message>
        <source>No language was selected.</source>
        <translation>언어를 선택하지 않았습니다.</translation>
    </message>
    <message>
        <source>The OCR engine cannot use the language data.</source>
        <translation>OCR 엔진이 언어 데이터를 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>The region is too large for the OCR engine.</source>
        <translation>영역이 OCR 엔진에 비해 너무 큽니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the OCR engine.</source>
        <translation>OCR 엔진에 필요한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>The OCR engine failed.</source>
        <translation>OCR 엔진이 실패했습니다.</translation>
    </message>
    <message>
        <source>The file is incomplete: %1 of %2 rows are missing or cut short.</source>
        <translation>파일이 불완전합니다. %2줄 중 %1줄이 없거나 잘렸습니다.</translation>
    </message>
    <message>
        <source>The file is incomplete: %1 pixels of the picture are missing.</source>
        <translation>파일이 불완전합니다. 그림의 픽셀 %1개가 없습니다.</translation>
    </message>
    <message>
        <source>The file is incomplete: the picture is missing from row %1 on.</source>
        <translation>파일이 불완전합니다. %1번째 줄부터 그림이 없습니다.</translation>
    </message>
    <message>
        <source>The file is incomplete: %1</source>
        <translation>파일이 불완전합니다: %1</translation>
    </message>
    <message>
        <source>The file has a flaw: %1</source>
        <translation>파일에 흠이 있습니다: %1</translation>
    </message>
    <message>
        <source>It is the first of at least %1 frames.</source>
        <translation>적어도 %1개 프레임 중 첫 번째입니다.</translation>
    </message>
    <message>
        <source>It is the first of %1 frames.</source>
        <translation>프레임 %1개 중 첫 번째입니다.</translation>
    </message>
    <message>
        <source>It is the first of more than %1 pages.</source>
        <translation>%1쪽이 넘는 가운데 첫 번째 쪽입니다.</translation>
    </message>
    <message>
        <source>It is the first of %1 pages.</source>
        <translation>%1쪽 중 첫 번째 쪽입니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the changed image.</source>
        <translation>변경된 이미지를 위한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>There is no image to change.</source>
        <translation>변경할 이미지가 없습니다.</translation>
    </message>
    <message>
        <source>The part to keep has no pixels in the image.</source>
        <translation>남길 영역에 이미지의 픽셀이 없습니다.</translation>
    </message>
    <message>
        <source>The filter cannot be loaded: %1.</source>
        <translation>필터를 불러올 수 없습니다: %1.</translation>
    </message>
    <message>
        <source>The BMP file ends before its pixels.</source>
        <translation>BMP 파일이 픽셀 앞에서 끝납니다.</translation>
    </message>
    <message>
        <source>The BMP file ends in its headers, or they are of an unknown kind.</source>
        <translation>BMP 파일이 머리글에서 끝나거나 알 수 없는 종류의 머리글입니다.</translation>
    </message>
    <message>
        <source>The BMP file is of an unsupported kind: compression %1 with %2 bits per pixel.</source>
        <translation>지원되지 않는 종류의 BMP 파일입니다: 압축 %1, 픽셀당 %2비트.</translation>
    </message>
    <message>
        <source>The GIF file ends before its first pixel.</source>
        <translation>GIF 파일이 첫 픽셀 앞에서 끝납니다.</translation>
    </message>
    <message>
        <source>The GIF file holds no picture, or ends before the first one.</source>
        <translation>GIF 파일에 그림이 없거나 첫 그림 앞에서 끝납니다.</translation>
    </message>
    <message>
        <source>The JPEG file is lossless, hierarchical or of 12 bits, which the library for JPEG lacks.</source>
        <translation>무손실, 계층형 또는 12비트 JPEG 파일이며, JPEG 라이브러리가 지원하지 않습니다.</translation>
    </message>
    <message>
        <source>The TIFF file is compressed by %1, which the library for TIFF lacks.</source>
        <translation>TIFF 파일이 %1(으)로 압축되어 있으며, TIFF 라이브러리가 지원하지 않습니다.</translation>
    </message>
    <message>
        <source>A GIF image is at most 65535 pixels wide and high.</source>
        <translation>GIF 이미지의 너비와 높이는 최대 65535픽셀입니다.</translation>
    </message>
    <message>
        <source>A BMP file holds at most 4 GiB.</source>
        <translation>BMP 파일은 최대 4GiB입니다.</translation>
    </message>
    <message>
        <source>A PGM file holds shades of grey only, and the image has colours.</source>
        <translation>PGM 파일은 회색조만 담을 수 있는데, 이미지에 색상이 있습니다.</translation>
    </message>
    <message>
        <source>The colour profile or a text of the file is too long and was not kept.</source>
        <translation>파일의 색상 프로필 또는 텍스트가 너무 길어 보존하지 않았습니다.</translation>
    </message>
    <message>
        <source>The image cannot be written as a %1 file: %2.</source>
        <translation>이미지를 %1 파일로 저장할 수 없습니다: %2.</translation>
    </message>
    <message>
        <source>The image cannot be written as a %1 file.</source>
        <translation>이미지를 %1 파일로 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>It is not a file of annotations.</source>
        <translation>주석 파일이 아닙니다.</translation>
    </message>
    <message>
        <source>It is not a file of annotations of this format.</source>
        <translation>이 형식의 주석 파일이 아닙니다.</translation>
    </message>
    <message>
        <source>It is of a later version, which this one cannot read.</source>
        <translation>더 새로운 버전의 파일이라 이 버전에서 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>It was saved by a later version; this one only shows it.</source>
        <translation>더 새로운 버전에서 저장했습니다. 이 버전은 보여 주기만 합니다.</translation>
    </message>
    <message>
        <source>The annotations are of a later version, which this one cannot save.</source>
        <translation>주석이 더 새로운 버전의 것이라 이 버전에서 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is there already and is not overwritten. %2</source>
        <translation>&quot;%1&quot;이(가) 이미 있으며 덮어쓰지 않습니다. %2</translation>
    </message>
    <message>
        <source>It is damaged at byte %1.</source>
        <translation>%1번째 바이트에서 손상되었습니다.</translation>
    </message>
    <message>
        <source>It is nested too deeply.</source>
        <translation>너무 깊이 중첩되어 있습니다.</translation>
    </message>
    <message>
        <source>The file is larger than 64 MiB.</source>
        <translation>파일이 64MiB보다 큽니다.</translation>
    </message>
    <message>
        <source>The file cannot be read.</source>
        <translation>파일을 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>The annotations take more than 64 MiB.</source>
        <translation>주석이 64MiB를 넘습니다.</translation>
    </message>
    <message>
        <source>There is not enough memory.</source>
        <translation>메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>The annotations were made for another version of this picture.</source>
        <translation>이 주석은 이 그림의 다른 버전에 만든 것입니다.</translation>
    </message>
    <message>
        <source>It stays as it is: only the program that made it can scale it.</source>
        <translation>그대로 둡니다. 만든 프로그램만 크기를 조정할 수 있습니다.</translation>
    </message>
    <message>
        <source>It stays as it is: scaled it would be too large.</source>
        <translation>그대로 둡니다. 크기를 조정하면 너무 커집니다.</translation>
    </message>
    <message>
        <source>The annotations were changed meanwhile.</source>
        <translation>그동안 주석이 변경되었습니다.</translation>
    </message>
    <message>
        <source>Cannot change the image.</source>
        <translation>이미지를 변경할 수 없습니다.</translation>
    </message>
    <message>
        <source>Another image is shown by now; the result was dropped.</source>
        <translation>이미 다른 이미지가 표시되어 결과를 버렸습니다.</translation>
    </message>
    <message>
        <source>Another image is shown by now.</source>
        <translation>이미 다른 이미지가 표시되어 있습니다.</translation>
    </message>
    <message>
        <source>Open %1</source>
        <translation>%1 열기</translation>
    </message>
    <message>
        <source>Save %1</source>
        <translation>%1 저장</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>회전</translation>
    </message>
    <message>
        <source>Change the image</source>
        <translation>이미지 변경</translation>
    </message>
    <message>
        <source>The page is empty or larger than the limit.</source>
        <translation>쪽이 비어 있거나 한도보다 큽니다.</translation>
    </message>
    <message>
        <source>The page cannot be drawn.</source>
        <translation>쪽을 그릴 수 없습니다.</translation>
    </message>
    <message>
        <source>There is not enough memory for the page.</source>
        <translation>쪽을 위한 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>The document could not be opened again.</source>
        <translation>문서를 다시 열 수 없었습니다.</translation>
    </message>
    <message>
        <source>It took longer than the time limit.</source>
        <translation>시간 제한을 넘었습니다.</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>취소되었습니다.</translation>
    </message>
    <message>
        <source>The program that reads documents ended unexpectedly.</source>
        <translation>문서를 읽는 프로그램이 예기치 않게 끝났습니다.</translation>
    </message>
    <message>
        <source>The program that reads documents gave no valid answer.</source>
        <translation>문서를 읽는 프로그램이 올바르게 응답하지 않았습니다.</translation>
    </message>
    <message>
        <source>The program vantor-pdf, which reads documents, cannot be started: %1. It is in the package vantor-pdf.</source>
        <translation>문서를 읽는 프로그램 vantor-pdf를 시작할 수 없습니다: %1. 이 프로그램은 vantor-pdf 패키지에 있습니다.</translation>
    </message>
    <message>
        <source>Cannot copy the image.</source>
        <translation>이미지를 복사할 수 없습니다.</translation>
    </message>
    <message>
        <source>Only the first %1 of %2 pages can be read.</source>
        <translation>%2쪽 중 처음 %1쪽만 읽을 수 있습니다.</translation>
    </message>
    <message>
        <source>The page is still being rendered.</source>
        <translation>이 쪽을 아직 그리는 중입니다.</translation>
    </message>
    <message>
        <source>Cannot compare the images.</source>
        <translation>이미지를 비교할 수 없습니다.</translation>
    </message>
    <message>
        <source>There are not two images to compare.</source>
        <translation>비교할 두 이미지가 없습니다.</translation>
    </message>
    <message>
        <source>The images differ in size: %1 and %2 pixels.</source>
        <translation>이미지의 크기가 다릅니다: %1 픽셀과 %2 픽셀.</translation>
    </message>
    <message>
        <source>The images differ in the number of channels: %1 and %2.</source>
        <translation>이미지의 채널 수가 다릅니다: %1과(와) %2.</translation>
    </message>
    <message>
        <source>The images differ in the bits per channel: %1 and %2.</source>
        <translation>이미지의 채널당 비트 수가 다릅니다: %1과(와) %2.</translation>
    </message>
    <message>
        <source>Compare the images</source>
        <translation>이미지 비교</translation>
    </message>
    <message>
        <source>Export %1</source>
        <translation>%1 내보내기</translation>
    </message>
    <message>
        <source>Cannot save table %1.</source>
        <translation>표 %1을(를) 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Cannot save plot %1.</source>
        <translation>그래프 %1을(를) 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>The size of a pixel is not a number from 1e-30 to 1e9 units.</source>
        <translation>픽셀의 크기가 1e-30에서 1e9 단위 사이의 수가 아닙니다.</translation>
    </message>
    <message>
        <source>The name of the unit has no letters or more than 64 bytes.</source>
        <translation>단위 이름에 글자가 없거나 64바이트를 넘습니다.</translation>
    </message>
    <message>
        <source>The name of the unit holds control characters.</source>
        <translation>단위 이름에 제어 문자가 있습니다.</translation>
    </message>
    <message>
        <source>The origin is not a place from -1e9 to 1e9 pixels.</source>
        <translation>원점이 -1e9에서 1e9 픽셀 사이의 위치가 아닙니다.</translation>
    </message>
    <message>
        <source>The way has no length.</source>
        <translation>거리가 0입니다.</translation>
    </message>
    <message>
        <source>There are more than %1 components. A larger smallest area leaves some out.</source>
        <translation>구성 요소가 %1개보다 많습니다. 최소 면적을 키우면 일부가 빠집니다.</translation>
    </message>
    <message>
        <source>The image does not have that channel.</source>
        <translation>이미지에 그 채널이 없습니다.</translation>
    </message>
</context>
<context>
    <name>MeasureTexts</name>
    <message>
        <source>Page</source>
        <translation>페이지</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>종류</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>단위</translation>
    </message>
    <message>
        <source>Pixels</source>
        <translation>픽셀</translation>
    </message>
    <message>
        <source>Pixel area</source>
        <translation>픽셀 넓이</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>넓이</translation>
    </message>
    <message>
        <source>Perimeter</source>
        <translation>둘레</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>길이</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>각도</translation>
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
        <translation>너비</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>높이</translation>
    </message>
    <message>
        <source>Feret</source>
        <translation>페렛 지름</translation>
    </message>
    <message>
        <source>Minimum Feret</source>
        <translation>최소 페렛 지름</translation>
    </message>
    <message>
        <source>Feret angle</source>
        <translation>페렛 각도</translation>
    </message>
    <message>
        <source>Circularity</source>
        <translation>원형도</translation>
    </message>
    <message>
        <source>Aspect</source>
        <translation>종횡비</translation>
    </message>
    <message>
        <source>Roundness</source>
        <translation>둥근 정도</translation>
    </message>
    <message>
        <source>Solidity</source>
        <translation>볼록도</translation>
    </message>
    <message>
        <source>Mean</source>
        <translation>평균</translation>
    </message>
    <message>
        <source>Deviation</source>
        <translation>표준편차</translation>
    </message>
    <message>
        <source>Minimum</source>
        <translation>최솟값</translation>
    </message>
    <message>
        <source>Maximum</source>
        <translation>최댓값</translation>
    </message>
    <message>
        <source>Median</source>
        <translation>중앙값</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>최빈값</translation>
    </message>
    <message>
        <source>Integrated density</source>
        <translation>적분 밀도</translation>
    </message>
    <message>
        <source>Sum</source>
        <translation>합계</translation>
    </message>
    <message>
        <source>Centroid X</source>
        <translation>중심 X</translation>
    </message>
    <message>
        <source>Centroid Y</source>
        <translation>중심 Y</translation>
    </message>
    <message>
        <source>Centre of mass X</source>
        <translation>질량 중심 X</translation>
    </message>
    <message>
        <source>Centre of mass Y</source>
        <translation>질량 중심 Y</translation>
    </message>
    <message>
        <source>Red mean</source>
        <translation>빨강 평균</translation>
    </message>
    <message>
        <source>Red deviation</source>
        <translation>빨강 표준편차</translation>
    </message>
    <message>
        <source>Red minimum</source>
        <translation>빨강 최솟값</translation>
    </message>
    <message>
        <source>Red maximum</source>
        <translation>빨강 최댓값</translation>
    </message>
    <message>
        <source>Green mean</source>
        <translation>초록 평균</translation>
    </message>
    <message>
        <source>Green deviation</source>
        <translation>초록 표준편차</translation>
    </message>
    <message>
        <source>Green minimum</source>
        <translation>초록 최솟값</translation>
    </message>
    <message>
        <source>Green maximum</source>
        <translation>초록 최댓값</translation>
    </message>
    <message>
        <source>Blue mean</source>
        <translation>파랑 평균</translation>
    </message>
    <message>
        <source>Blue deviation</source>
        <translation>파랑 표준편차</translation>
    </message>
    <message>
        <source>Blue minimum</source>
        <translation>파랑 최솟값</translation>
    </message>
    <message>
        <source>Blue maximum</source>
        <translation>파랑 최댓값</translation>
    </message>
    <message>
        <source>Alpha mean</source>
        <translation>알파 평균</translation>
    </message>
    <message>
        <source>Alpha deviation</source>
        <translation>알파 표준편차</translation>
    </message>
    <message>
        <source>Alpha minimum</source>
        <translation>알파 최솟값</translation>
    </message>
    <message>
        <source>Alpha maximum</source>
        <translation>알파 최댓값</translation>
    </message>
    <message>
        <source>Measurements</source>
        <translation>측정값</translation>
    </message>
    <message>
        <source>All pages</source>
        <translation>모든 페이지</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>열</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>복사</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>저장...</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>결과</translation>
    </message>
    <message>
        <source>Shapes: %1</source>
        <translation>도형: %1</translation>
    </message>
    <message>
        <source>%1: N %2, mean %3, deviation %4, minimum %5, maximum %6</source>
        <translation>%1: N %2, 평균 %3, 표준편차 %4, 최솟값 %5, 최댓값 %6</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>그림</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>값</translation>
    </message>
    <message>
        <source>Channels</source>
        <translation>채널</translation>
    </message>
    <message>
        <source>Logarithmic</source>
        <translation>로그</translation>
    </message>
    <message>
        <source>Whole image</source>
        <translation>전체 이미지</translation>
    </message>
    <message>
        <source>%1: N %2, mean %3, deviation %4, minimum %5, maximum %6, mode %7</source>
        <translation>%1: N %2, 평균 %3, 표준편차 %4, 최솟값 %5, 최댓값 %6, 최빈값 %7</translation>
    </message>
    <message>
        <source>Value %1: %2</source>
        <translation>값 %1: %2</translation>
    </message>
    <message>
        <source>%1 %2: %3</source>
        <translation>%1 %2: %3</translation>
    </message>
    <message>
        <source>Select a ruler or an arrow.</source>
        <translation>눈금자나 화살표를 선택하세요.</translation>
    </message>
    <message>
        <source>%1: length %2 %3</source>
        <translation>%1: 길이 %2 %3</translation>
    </message>
    <message>
        <source>Grey</source>
        <translation>회색</translation>
    </message>
    <message>
        <source>Weighted grey</source>
        <translation>가중 회색</translation>
    </message>
    <message>
        <source>Colors</source>
        <translation>색상</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>빨강</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>초록</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>파랑</translation>
    </message>
    <message>
        <source>Alpha</source>
        <translation>알파</translation>
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
        <translation>문서의 해상도(&amp;R):</translation>
    </message>
    <message>
        <source> dots per inch</source>
        <translation> dpi</translation>
    </message>
    <message>
        <source>&amp;Memory for pages of documents:</source>
        <translation>문서 페이지용 메모리(&amp;M):</translation>
    </message>
    <message>
        <source>Memory for &amp;images read ahead:</source>
        <translation>미리 읽는 이미지용 메모리(&amp;I):</translation>
    </message>
    <message>
        <source>&amp;Quality of JPEG files:</source>
        <translation>JPEG 파일의 품질(&amp;Q):</translation>
    </message>
    <message>
        <source>&amp;Folder where dialogs start:</source>
        <translation>대화 상자가 시작하는 폴더(&amp;F):</translation>
    </message>
    <message>
        <source>&amp;Language of texts to read:</source>
        <translation>읽을 텍스트의 언어(&amp;L):</translation>
    </message>
    <message>
        <source>Long work runs &amp;beside the window</source>
        <translation>긴 작업은 창 옆에서 실행(&amp;B)</translation>
    </message>
    <message>
        <source>Transparent images on a &amp;checkerboard</source>
        <translation>투명한 이미지를 바둑판 위에 표시(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Ask before unsaved work is lost</source>
        <translation>저장하지 않은 작업을 잃기 전에 묻기(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Save annotations by themselves</source>
        <translation>주석 자동 저장(&amp;S)</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Usage: %1</source>
        <translation>사용법: %1</translation>
    </message>
    <message>
        <source>[options]</source>
        <translation>[옵션]</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>옵션:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>인자:</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>&apos;%1&apos; 다음에 값이 없습니다.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>&apos;%1&apos; 다음에 예상하지 않은 값이 있습니다.</translation>
    </message>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>알 수 없는 옵션 &apos;%1&apos;.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>알 수 없는 옵션: %1.</translation>
    </message>
</context>
<context>
    <name>QDockWidget</name>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>Closes the dock widget</source>
        <translation>도킹 창을 닫습니다</translation>
    </message>
    <message>
        <source>Float</source>
        <translation>띄우기</translation>
    </message>
    <message>
        <source>Undocks and re-attaches the dock widget</source>
        <translation>도킹 창을 떼거나 다시 붙입니다</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
</context>
<context>
    <name>SCommandLine</name>
    <message>
        <source>Shows, annotates and processes images and PDF documents.</source>
        <translation>이미지와 PDF 문서를 보고, 주석을 달고, 처리합니다.</translation>
    </message>
    <message>
        <source>layout</source>
        <translation>배치</translation>
    </message>
    <message>
        <source>Write a picture of the main window and quit.</source>
        <translation>주 창의 그림을 저장하고 끝냅니다.</translation>
    </message>
    <message>
        <source>file</source>
        <translation>파일</translation>
    </message>
    <message>
        <source>Keep the settings in this folder; it is made if need be.</source>
        <translation>설정을 이 폴더에 저장합니다. 폴더가 없으면 만듭니다.</translation>
    </message>
    <message>
        <source>folder</source>
        <translation>폴더</translation>
    </message>
    <message>
        <source>Write the log files into this folder; it is made if need be.</source>
        <translation>로그 파일을 이 폴더에 씁니다. 폴더가 없으면 만듭니다.</translation>
    </message>
    <message>
        <source>Show the version and quit.</source>
        <translation>버전을 표시하고 끝냅니다.</translation>
    </message>
    <message>
        <source>Show this help and quit.</source>
        <translation>이 도움말을 표시하고 끝냅니다.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no layout; use 1x1, 2x1 or 2x2.</source>
        <translation>&quot;%1&quot;은(는) 올바른 배치가 아닙니다. 1x1, 2x1 또는 2x2를 사용하십시오.</translation>
    </message>
    <message>
        <source>The option --%1 needs a name.</source>
        <translation>--%1 옵션에는 이름이 필요합니다.</translation>
    </message>
    <message>
        <source>cannot write %1</source>
        <translation>%1에 쓸 수 없습니다</translation>
    </message>
    <message>
        <source>Try &apos;vantor-viewer --help&apos;.</source>
        <translation>&apos;vantor-viewer --help&apos;를 실행해 보십시오.</translation>
    </message>
    <message>
        <source>Show one, two or four viewers (1x1, 2x1 or 2x2) and deal the files over them.</source>
        <translation>뷰어를 하나, 둘 또는 네 개(1x1, 2x1, 2x2) 보이고 파일을 나누어 엽니다.</translation>
    </message>
    <message>
        <source>Images and documents, as paths or file:// addresses: up to four side by side, more as the list of one viewer.</source>
        <translation>이미지와 문서의 경로 또는 file:// 주소: 네 개까지는 나란히, 그보다 많으면 한 뷰어의 목록으로 엽니다.</translation>
    </message>
</context>
<context>
    <name>ShapeKinds</name>
    <message>
        <source>&amp;Rectangle</source>
        <translation>사각형(&amp;R)</translation>
    </message>
    <message>
        <source>&amp;Circle</source>
        <translation>원(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Ellipse</source>
        <translation>타원(&amp;E)</translation>
    </message>
    <message>
        <source>&amp;Polygon</source>
        <translation>다각형(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Arrow</source>
        <translation>화살표(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>텍스트(&amp;T)</translation>
    </message>
    <message>
        <source>Rectangle</source>
        <translation>사각형</translation>
    </message>
    <message>
        <source>Circle</source>
        <translation>원</translation>
    </message>
    <message>
        <source>Ellipse</source>
        <translation>타원</translation>
    </message>
    <message>
        <source>Polygon</source>
        <translation>다각형</translation>
    </message>
    <message>
        <source>Arrow</source>
        <translation>화살표</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>텍스트</translation>
    </message>
    <message>
        <source>Ruler</source>
        <translation>자</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>선</translation>
    </message>
    <message>
        <source>Point</source>
        <translation>점</translation>
    </message>
    <message>
        <source>GeometryArray</source>
        <translation>도형 묶음</translation>
    </message>
    <message>
        <source>&amp;Scale Bar</source>
        <translation>축척 막대(&amp;S)</translation>
    </message>
    <message>
        <source>ScaleBar</source>
        <translation>축척 막대</translation>
    </message>
</context>
<context>
    <name>TextReading</name>
    <message>
        <source>&amp;Copy All</source>
        <translation>모두 복사(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Save Text...</source>
        <translation>텍스트 저장(&amp;S)...</translation>
    </message>
    <message>
        <source>Save Text</source>
        <translation>텍스트 저장</translation>
    </message>
    <message>
        <source>Text (*.txt);;All files (*)</source>
        <translation>텍스트 (*.txt);;모든 파일 (*)</translation>
    </message>
    <message>
        <source>The text cannot be written to %1.</source>
        <translation>텍스트를 %1에 쓸 수 없습니다.</translation>
    </message>
</context>
</TS>
