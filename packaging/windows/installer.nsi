; The installer of Tavex2 for one user: needs no administrator.
; makensis -DVERSION=... -DFILES=folder -DOUTPUT=file
Target amd64-unicode
!include MUI2.nsh

Name "Tavex2 ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Tavex2"
InstallDirRegKey HKCU "Software\Tavex2" "Install"
SetCompressor /SOLID lzma

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tavex2"
!define CLASSES "Software\Classes"

!insertmacro MUI_PAGE_LICENSE "${FILES}\licences\Tavex2.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\tavex2.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A file type that a double click opens with the program.
!macro FileType EXTENSION TYPE DESCRIPTION
    WriteRegStr HKCU "${CLASSES}\${EXTENSION}" "" "${TYPE}"
    WriteRegStr HKCU "${CLASSES}\${TYPE}" "" "${DESCRIPTION}"
    WriteRegStr HKCU "${CLASSES}\${TYPE}\DefaultIcon" "" "$INSTDIR\tavex2.exe,0"
    WriteRegStr HKCU "${CLASSES}\${TYPE}\shell\open\command" "" '"$INSTDIR\tavex2.exe" "%1"'
!macroend

Section
    SetOutPath "$INSTDIR"
    File /r "${FILES}\*"
    CreateShortcut "$SMPROGRAMS\Tavex2.lnk" "$INSTDIR\tavex2.exe"
    !insertmacro FileType ".lmb" "Tavex2.Trial" "Tavex2 trial"
    !insertmacro FileType ".plv" "Tavex2.StimulusTrial" "Trial of the stimulus program"
    !insertmacro FileType ".set" "Tavex2.Setup" "Tavex2 setup file"
    WriteRegStr HKCU "Software\Tavex2" "Install" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Tavex2"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\tavex2.exe"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteUninstaller "$INSTDIR\uninstall.exe"
SectionEnd

; Settings and trials of the user stay.
Section "Uninstall"
    RMDir /r "$INSTDIR\help"
    RMDir /r "$INSTDIR\licences"
    RMDir /r "$INSTDIR\platforms"
    RMDir /r "$INSTDIR\styles"
    Delete "$INSTDIR\*.dll"
    Delete "$INSTDIR\tavex2.exe"
    Delete "$INSTDIR\tavex2.com"
    Delete "$INSTDIR\tone.wav"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\Tavex2.lnk"
    DeleteRegKey HKCU "${CLASSES}\Tavex2.Trial"
    DeleteRegKey HKCU "${CLASSES}\Tavex2.StimulusTrial"
    DeleteRegKey HKCU "${CLASSES}\Tavex2.Setup"
    DeleteRegValue HKCU "Software\Tavex2" "Install"
    DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
