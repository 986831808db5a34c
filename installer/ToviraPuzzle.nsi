; The Windows installer of ToviraPuzzle: installs for the current user, without administrator
; rights, into a folder the user can write to, since the program keeps its Puz and Col folders
; and finds its help files in the folder it starts in.
;   makensis -DSOURCE=<folder with the program and help files> -DOUTFILE=<setup.exe>
;            [-DARCH=amd64] ToviraPuzzle.nsi
; ARCH amd64 packs a 64-bit build the same way, for testing where 32-bit code cannot run.

Unicode true
SetCompressor /SOLID lzma
SetDateSave off

!define APP "ToviraPuzzle"
!define VERSION "1.0.0"
!define PUBLISHER "Tovira Software"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${APP}"
!define SETTINGS_KEY "Software\${PUBLISHER}\${APP}"

!ifdef ARCH
!if "${ARCH}" == "amd64"
Target amd64-unicode
!endif
!endif

Name "${APP} ${VERSION}"
OutFile "${OUTFILE}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${APP}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 "ProductName" "${APP}"
VIAddVersionKey /LANG=1033 "CompanyName" "${PUBLISHER}"
VIAddVersionKey /LANG=1033 "FileDescription" "${APP} setup"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "LegalCopyright" "© 2026 ${PUBLISHER}"

!include "MUI2.nsh"

!define MUI_ICON "../resources/icons/icon103.ico"
!define MUI_UNICON "../resources/icons/icon103.ico"
!define MUI_ABORTWARNING
!define MUI_LANGDLL_ALLLANGUAGES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
!define MUI_COMPONENTSPAGE_NODESC

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Spanish"

LangString ProgramSection ${LANG_ENGLISH} "${APP} and its help"
LangString ProgramSection ${LANG_SPANISH} "${APP} y su ayuda"
LangString DesktopSection ${LANG_ENGLISH} "Desktop shortcut"
LangString DesktopSection ${LANG_SPANISH} "Acceso directo en el escritorio"
LangString KeepSection ${LANG_ENGLISH} "Remove ${APP}"
LangString KeepSection ${LANG_SPANISH} "Quitar ${APP}"
LangString DataSection ${LANG_ENGLISH} "Also remove my saved puzzles, collections and settings"
LangString DataSection ${LANG_SPANISH} "Quitar también mis puzzles guardados, colecciones y opciones"

; The program and help files, as the build leaves them.
!macro ProgramFiles ACTION
  ${ACTION} "${APP}.exe"
  ${ACTION} "${APP}.hlp"
  ${ACTION} "${APP}.cnt"
  ${ACTION} "${APP}.chm"
  ${ACTION} "${APP}Es.hlp"
  ${ACTION} "${APP}Es.cnt"
  ${ACTION} "${APP}Es.chm"
!macroend
!macro PackFile NAME
  File "${SOURCE}\${NAME}"
!macroend
!macro RemoveFile NAME
  Delete "$INSTDIR\${NAME}"
!macroend

Function .onInit
  !insertmacro MUI_LANGDLL_DISPLAY
FunctionEnd

Function un.onInit
  !insertmacro MUI_UNGETLANGUAGE
FunctionEnd

; Started from the finish page in the install folder, as the shortcut starts it.
Function StartProgram
  SetOutPath "$INSTDIR"
  Exec '"$INSTDIR\${APP}.exe"'
FunctionEnd

Section "!$(ProgramSection)" ProgramSection
  SectionIn RO
  SetOutPath "$INSTDIR"
  !insertmacro ProgramFiles "!insertmacro PackFile"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ; The shortcut starts in the install folder (the output path).
  CreateDirectory "$SMPROGRAMS\${APP}"
  CreateShortcut "$SMPROGRAMS\${APP}\${APP}.lnk" "$INSTDIR\${APP}.exe" "" "$INSTDIR\${APP}.exe" 0

  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${APP}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${APP}.exe,0"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${ProgramSection} $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section /o "$(DesktopSection)" DesktopSection
  SetOutPath "$INSTDIR"
  CreateShortcut "$DESKTOP\${APP}.lnk" "$INSTDIR\${APP}.exe" "" "$INSTDIR\${APP}.exe" 0
SectionEnd

Section "!un.$(KeepSection)" UnProgramSection
  SectionIn RO
  !insertmacro ProgramFiles "!insertmacro RemoveFile"
  ; What a WinHelp viewer writes beside the help files.
  Delete "$INSTDIR\${APP}*.GID"
  Delete "$INSTDIR\${APP}*.FTS"
  Delete "$INSTDIR\${APP}*.FTG"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\${APP}\${APP}.lnk"
  RMDir "$SMPROGRAMS\${APP}"
  Delete "$DESKTOP\${APP}.lnk"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd

; The player's own work stays unless asked for.
Section /o "un.$(DataSection)" UnDataSection
  RMDir /r "$INSTDIR\Puz"
  RMDir /r "$INSTDIR\Col"
  DeleteRegKey HKCU "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKCU "Software\${PUBLISHER}"
SectionEnd

Section "-un.Folder"
  RMDir "$INSTDIR"
SectionEnd
