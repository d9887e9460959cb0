; The installer for Windows: for one user, without administrator rights. make-installer calls it with
;   VERSION "3.44k"   NUMBERS "3.44.11.0"   KILOBYTES of what is installed
;   TREE its folder   REMOVE a file with the commands that remove it   OUTPUT   ICON   PICTURE, 164 x 314 pixels
; Switches: /S silent, /PATH adds the command line to the search path, /D=FOLDER (last, without quotes); of the
; uninstaller: /S, /SETTINGS removes the user's settings as well. Exit status: 0 done, 1 cancelled, 2 failed, 3 refused
; because the program runs. It speaks the language of the user's system, English where that is neither of the two.
Unicode true
Target amd64-unicode
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user
SetCompressor /SOLID lzma
Name "Lorivan ${VERSION}"
BrandingText "Lorivan ${VERSION}"
OutFile "${OUTPUT}"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Lorivan"
!define APP_PATHS "Software\Microsoft\Windows\CurrentVersion\App Paths"
!define CLASSES "Software\Classes"
!define RUNNING 3
!define FAILED 2
!define TRIAL ".lorivan-trial"
InstallDir "$LOCALAPPDATA\Programs\Lorivan"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"

VIProductVersion "${NUMBERS}"

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\lorivan.exe"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English" ; the first one speaks to everybody else
!insertmacro MUI_LANGUAGE "German"

!macro VersionKeys language description authors
  VIAddVersionKey /LANG=${language} "ProductName" "Lorivan"
  VIAddVersionKey /LANG=${language} "ProductVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "FileVersion" "${VERSION}"
  VIAddVersionKey /LANG=${language} "FileDescription" "${description}"
  VIAddVersionKey /LANG=${language} "LegalCopyright" "${authors}"
!macroend
!insertmacro VersionKeys ${LANG_ENGLISH} "Installs Lorivan, a designer of interlaced knots" "The authors of Lorivan"
!insertmacro VersionKeys ${LANG_GERMAN} "Installiert Lorivan, ein Programm für Flechtknoten" "Die Autoren von Lorivan"

!macro Text name english german
  LangString ${name} ${LANG_ENGLISH} "${english}"
  LangString ${name} ${LANG_GERMAN} "${german}"
!macroend
!insertmacro Text Running "Lorivan is running. Close it, then try again." "Lorivan läuft noch. Bitte beenden und noch einmal versuchen."
!insertmacro Text NotRemoved "The version that is installed could not be removed." "Die installierte Version konnte nicht entfernt werden."
!insertmacro Text NotWritten "The files could not be written to $INSTDIR." "Die Dateien konnten nicht nach $INSTDIR geschrieben werden."
!insertmacro Text NoPath "The search path could not be changed." "Der Suchpfad konnte nicht geändert werden."
!insertmacro Text KnotType "Lorivan knot" "Lorivan-Knoten"
!insertmacro Text ShapeType "Lorivan shape" "Lorivan-Form"
!insertmacro Text NamePath "Command line" "Befehlszeile"
!insertmacro Text NameSettings "Settings and unsaved work" "Einstellungen, Kopien"
!insertmacro Text AboutMain "The program, its help and examples, and an entry in the start menu. Knot files (.qzd) and shape files (.qzc) open with a double click." "Das Programm mit Hilfe und Beispielen und ein Eintrag im Startmenü. Knotendateien (.qzd) und Formdateien (.qzc) öffnen sich mit einem Doppelklick."
!insertmacro Text AboutPath "Adds the folder to your search path: a command prompt knows lorivan wherever you are. Prompts that are open already do not." "Nimmt den Ordner in Ihren Suchpfad auf: Jede neue Eingabeaufforderung kennt lorivan in jedem Ordner; bereits geöffnete kennen es noch nicht."
!insertmacro Text AboutUnMain "Everything that was installed. Files of your own stay, also those in the program's folder." "Alles, was installiert wurde. Ihre eigenen Dateien bleiben, auch die im Ordner des Programms."
!insertmacro Text AboutUnSettings "The window's fields, colours and recent files, the knot shown last, and copies of unsaved work." "Felder, Farben und zuletzt geöffnete Dateien des Fensters, der zuletzt gezeigte Knoten und Kopien ungesicherter Arbeit."
!insertmacro Text AboutLink "Design interlaced knots in two and three dimensions" "Flechtknoten in zwei und drei Dimensionen entwerfen"

Var Old        ; folder of the version that is installed already, or empty
Var Template   ; "kept" when the template for POV-Ray scenes is the user's own

; A program that runs cannot be written to. Goes on when neither program in the folder $R0 does.
!macro RefuseWhileRunning un
Function ${un}RefuseWhileRunning
  again:
    ${For} $R1 0 1
      StrCpy $R2 "$R0\lorivan.exe"
      ${If} $R1 = 1
        StrCpy $R2 "$R0\lorivan.com"
      ${EndIf}
      ${If} ${FileExists} "$R2"
        ClearErrors
        FileOpen $R3 "$R2" a
        IfErrors busy
        FileClose $R3
      ${EndIf}
    ${Next}
    Return
  busy:
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" /SD IDCANCEL IDRETRY again
    SetErrorLevel ${RUNNING}
    Quit
FunctionEnd
!macroend
!insertmacro RefuseWhileRunning ""
!insertmacro RefuseWhileRunning "un."

!macro Fail text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel ${FAILED}
  Quit
!macroend

; Files of this extension open with a double click. Who opened them before is written down.
!macro Associate extension type name icon
  WriteRegStr HKCU "${CLASSES}\${type}" "" "${name}"
  WriteRegStr HKCU "${CLASSES}\${type}\DefaultIcon" "" '"$INSTDIR\lorivan.exe",-${icon}'
  WriteRegStr HKCU "${CLASSES}\${type}\shell\open\command" "" '"$INSTDIR\lorivan.exe" "%1"'
  ReadRegStr $0 HKCU "${CLASSES}\${extension}" ""
  ${If} $0 != "${type}"
    WriteRegStr HKCU "${UNINSTALL}" "Before${extension}" "$0"
  ${EndIf}
  WriteRegStr HKCU "${CLASSES}\${extension}" "" "${type}"
  WriteRegStr HKCU "${CLASSES}\${extension}\OpenWithProgids" "${type}" ""
!macroend

!macro Dissociate extension type
  ReadRegStr $0 HKCU "${CLASSES}\${extension}" ""
  ReadRegStr $1 HKCU "${UNINSTALL}" "Before${extension}"
  ${If} $0 == "${type}"
    ${If} $1 == ""
      DeleteRegValue HKCU "${CLASSES}\${extension}" ""
    ${Else}
      WriteRegStr HKCU "${CLASSES}\${extension}" "" "$1"
    ${EndIf}
  ${EndIf}
  DeleteRegValue HKCU "${CLASSES}\${extension}\OpenWithProgids" "${type}"
  DeleteRegKey /ifempty HKCU "${CLASSES}\${extension}\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "${CLASSES}\${extension}"
  DeleteRegKey HKCU "${CLASSES}\${type}"
!macroend

!define SHCNE_ASSOCCHANGED 0x08000000
!macro TellDesktop
  System::Call "shell32::SHChangeNotify(i ${SHCNE_ASSOCCHANGED}, i 0, p 0, p 0)"
!macroend

; The template for POV-Ray scenes may be edited: only one that is as it was installed is replaced or removed.
!macro TimeOfTemplate out
  GetFileTime "$INSTDIR\povinit.txt" $0 $1
  StrCpy ${out} "$0 $1"
!macroend

; Everything once beside an older version, before that goes: where there is no room, or no right to write, it stays.
!macro DropTrial
  SetOutPath "$TEMP"
  RMDir /r "$INSTDIR\${TRIAL}"
!macroend

; The files themselves could not be written, and the section was left.
Function .onInstFailed
  !insertmacro DropTrial
FunctionEnd

Section "Lorivan" Main
  SectionIn RO
  ${If} $Old != ""
    StrCpy $R0 $Old
    Call RefuseWhileRunning
    !insertmacro DropTrial
    ClearErrors
    SetOutPath "$INSTDIR\${TRIAL}"
    File /r "${TREE}/*"
    WriteUninstaller "$INSTDIR\${TRIAL}\uninstall.exe"
    ${If} ${Errors}
      !insertmacro DropTrial
      RMDir "$INSTDIR"
      !insertmacro Fail "$(NotWritten)"
    ${EndIf}
    !insertmacro DropTrial
    ; With "_?" it stays where it is, and can be waited for.
    ClearErrors
    ExecWait '"$Old\uninstall.exe" /S /UPGRADE _?=$Old' $0
    ${If} ${Errors}
    ${OrIf} $0 <> 0
      !insertmacro Fail "$(NotRemoved)"
    ${EndIf}
    Delete "$Old\uninstall.exe"
    RMDir "$Old"
  ${EndIf}
  StrCpy $R0 $INSTDIR
  Call RefuseWhileRunning

  ${If} ${FileExists} "$INSTDIR\povinit.txt"
    StrCpy $Template "kept"
  ${EndIf}
  SetOutPath "$INSTDIR"
  ClearErrors
  SetOverwrite off
  File "${TREE}/povinit.txt"
  SetOverwrite on
  File /r /x povinit.txt "${TREE}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro Fail "$(NotWritten)"
  ${EndIf}

  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Lorivan"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" '"$INSTDIR\lorivan.exe",-1'
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Lorivan maintainers"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${If} $Template != "kept"
    !insertmacro TimeOfTemplate $2
    WriteRegStr HKCU "${UNINSTALL}" "Template" "$2"
  ${EndIf}

  !insertmacro Associate ".qzd" "Lorivan.Knot" "$(KnotType)" 2
  !insertmacro Associate ".qzc" "Lorivan.Shape" "$(ShapeType)" 3
  WriteRegStr HKCU "${CLASSES}\Applications\lorivan.exe" "FriendlyAppName" "Lorivan"
  WriteRegStr HKCU "${CLASSES}\Applications\lorivan.exe\shell\open\command" "" '"$INSTDIR\lorivan.exe" "%1"'
  !macro Supported extension
    WriteRegStr HKCU "${CLASSES}\Applications\lorivan.exe\SupportedTypes" "${extension}" ""
  !macroend
  !insertmacro Supported ".qzd"
  !insertmacro Supported ".qzc"
  !insertmacro Supported ".svg"
  !insertmacro Supported ".pdf"
  !insertmacro Supported ".png"
  !insertmacro Supported ".3mf"
  !insertmacro Supported ".glb"
  WriteRegStr HKCU "${APP_PATHS}\lorivan.exe" "" "$INSTDIR\lorivan.exe"
  !insertmacro TellDesktop

  SetOutPath "$DOCUMENTS" ; where the program starts
  CreateShortCut "$SMPROGRAMS\Lorivan.lnk" "$INSTDIR\lorivan.exe" "" "" "" "" "" "$(AboutLink)"
SectionEnd

Section /o "$(NamePath)" Path
  ClearErrors
  ExecWait '"$INSTDIR\lorivan.exe" --search-path add' $0
  ${If} ${Errors}
  ${OrIf} $0 <> 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(NoPath)" /SD IDOK
    SetErrorLevel ${FAILED}
  ${Else}
    WriteRegDWORD HKCU "${UNINSTALL}" "OnPath" 1
  ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Main} $(AboutMain)
  !insertmacro MUI_DESCRIPTION_TEXT ${Path} $(AboutPath)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ReadRegStr $Old HKCU "${UNINSTALL}" "InstallLocation"
  ${IfNot} ${FileExists} "$Old\uninstall.exe"
    StrCpy $Old ""
  ${EndIf}
  ReadRegDWORD $0 HKCU "${UNINSTALL}" "OnPath"
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/PATH" $2
  ${IfNot} ${Errors}
  ${OrIf} $0 = 1
    !insertmacro SelectSection ${Path}
  ${EndIf}
FunctionEnd

Section "un.Lorivan" UnMain
  SectionIn RO
  StrCpy $R0 $INSTDIR
  Call un.RefuseWhileRunning
  ReadRegDWORD $0 HKCU "${UNINSTALL}" "OnPath"
  ${If} $0 = 1
    ExecWait '"$INSTDIR\lorivan.exe" --search-path remove'
  ${EndIf}
  ReadRegStr $2 HKCU "${UNINSTALL}" "Template"
  !insertmacro TimeOfTemplate $3
  ${If} $2 == $3
    Delete "$INSTDIR\povinit.txt"
  ${EndIf}
  !include "${REMOVE}"
  Delete "$SMPROGRAMS\Lorivan.lnk"
  !insertmacro Dissociate ".qzd" "Lorivan.Knot"
  !insertmacro Dissociate ".qzc" "Lorivan.Shape"
  DeleteRegKey HKCU "${CLASSES}\Applications\lorivan.exe"
  DeleteRegKey /ifempty HKCU "${CLASSES}\Applications"
  DeleteRegKey HKCU "${APP_PATHS}\lorivan.exe"
  DeleteRegKey /ifempty HKCU "${APP_PATHS}"
  DeleteRegKey HKCU "${UNINSTALL}"
  !insertmacro TellDesktop
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/UPGRADE" $2
  ${If} ${Errors}
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    RMDir "$LOCALAPPDATA\Programs"
    RMDir "$LOCALAPPDATA\Lorivan"
  ${EndIf}
SectionEnd

Section /o "un.$(NameSettings)" UnSettings
  DeleteRegKey HKCU "Software\Lorivan"
  ; By name: the program may have been installed into this folder, beside files of the user's own.
  Delete "$LOCALAPPDATA\Lorivan\last.qzd"
  Delete "$LOCALAPPDATA\Lorivan\unsaved-*"
  Delete "$LOCALAPPDATA\Lorivan\.lorivan-*"
  RMDir "$LOCALAPPDATA\Lorivan"
SectionEnd

!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${UnMain} $(AboutUnMain)
  !insertmacro MUI_DESCRIPTION_TEXT ${UnSettings} $(AboutUnSettings)
!insertmacro MUI_UNFUNCTION_DESCRIPTION_END

Function un.onInit
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/SETTINGS" $2
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${UnSettings}
  ${EndIf}
FunctionEnd
