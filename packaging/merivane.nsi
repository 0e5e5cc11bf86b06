; The installer. ./package defines VERSION and STAGE, the folder with what is installed, and puts files.nsh there:
; the lists of files and their sizes. What it does and its options: docs/release.md.

Unicode true
!include MUI2.nsh
!include nsDialogs.nsh
!include LogicLib.nsh
!include Sections.nsh
!include FileFunc.nsh
!include WinVer.nsh
!include x64.nsh
!include path.nsh
!include "${STAGE}/files.nsh"

!define PROGRAM_KEY "Software\Brackenfold\Merivane"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Merivane"
!define UNINSTALLER "merivane-uninstall.exe"

; Exit codes besides 0 and 1 (cancelled).
!define EXIT_NOT_WRITTEN 2 ; also NSIS's own when it cannot write a file
!define EXIT_RUNNING 3
!define EXIT_NO_RIGHTS 4
!define EXIT_OLD_SYSTEM 5
!define EXIT_OLD_VERSION_STAYS 6

Name "Merivane"
OutFile "${OUTFILE}"
SetCompressor /SOLID lzma
SetCompressorDictSize 16
RequestExecutionLevel user ; for all users it starts itself again with more rights
ManifestDPIAware true
AllowSkipFiles off
InstallDir ""
BrandingText "Merivane ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Merivane"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs Merivane"
VIAddVersionKey CompanyName "Brackenfold"
VIAddVersionKey LegalCopyright "Brackenfold"

Var AllUsers      ; 1: for all users of the machine
Var Bits          ; of the programs that are installed
Var GivenFolder   ; of /D=
Var OldFolder     ; in which a version is installed already; may be empty
Var AllUsersRadio

!define MUI_ICON "../resources/merivane.ico"
!define MUI_UNICON "../resources/merivane.ico"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_WELCOMEFINISHPAGE_BITMAP "${STAGE}/panel.bmp"
!insertmacro MUI_PAGE_LICENSE "../LICENSE"
Page custom showScopePage leaveScopePage
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Merivane"
!define MUI_FINISHPAGE_RUN_FUNCTION startProgram
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

!macro QuitWith CODE
  SetErrorLevel ${CODE}
  Quit
!macroend

; WaitUntilClosed: quits unless nothing in the folder $0 is in use. A program that runs cannot be opened to be
; written; it may have unsaved texts, so that only the user can end it.
!macro DefineWaitUntilClosed un
Function ${un}WaitUntilClosed
  again:
  StrCpy $1 ""
  !insertmacro AddIfInUse merivane.exe
  !insertmacro AddIfInUse merivane-diff.exe
  !insertmacro AddIfInUse manual.chm
  ${If} $1 != ""
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "These files are in use:$\n$1$\n$\nPlease close all windows of Merivane and its manual, and press Retry." /SD IDCANCEL IDRETRY again
    !insertmacro QuitWith ${EXIT_RUNNING}
  ${EndIf}
FunctionEnd
!macroend

!macro AddIfInUse FILE
  ${If} ${FileExists} "$0\${FILE}"
    ClearErrors
    FileOpen $2 "$0\${FILE}" a
    ${If} ${Errors}
      StrCpy $1 "$1$\n$0\${FILE}"
    ${Else}
      FileClose $2
    ${EndIf}
  ${EndIf}
!macroend

; The 64-bit programs where the processor is for them; their registry is then the 64-bit one.
!macro ChooseBits
  StrCpy $Bits 32
  ${If} ${IsNativeAMD64}
    StrCpy $Bits 64
    SetRegView 64
  ${EndIf}
!macroend

; RemoveUninstaller: from the folder $0, and the folder if that is empty then. The process that has started this one
; may not have ended yet, and a scanner may read the file: for ten seconds that is no failure.
!macro DefineRemoveUninstaller un
Function ${un}RemoveUninstaller
  SetOutPath $TEMP ; a current folder stays
  ${For} $1 1 100
    ClearErrors
    Delete "$0\${UNINSTALLER}"
    ${IfNot} ${Errors}
      ${ExitFor}
    ${EndIf}
    Sleep 100
  ${Next}
  RMDir $0
FunctionEnd
!macroend

!insertmacro DefineChangePath ""
!insertmacro DefineChangePath "un."
!insertmacro DefineWaitUntilClosed ""
!insertmacro DefineWaitUntilClosed "un."
!insertmacro DefineRemoveUninstaller ""
!insertmacro DefineRemoveUninstaller "un."

; Installing.

Section "-Earlier version"
  StrCpy $0 $INSTDIR
  Call WaitUntilClosed
  ; Before anything is taken away.
  CreateDirectory $INSTDIR
  ClearErrors
  FileOpen $0 "$INSTDIR\merivane-setup.tmp" w
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "Nothing can be written into the folder $INSTDIR." /SD IDOK
    !insertmacro QuitWith ${EXIT_NOT_WRITTEN}
  ${EndIf}
  FileClose $0
  Delete "$INSTDIR\merivane-setup.tmp"
  ${If} $OldFolder != ""
  ${AndIf} ${FileExists} "$OldFolder\${UNINSTALLER}"
    StrCpy $0 $OldFolder
    Call WaitUntilClosed
    ; It knows what it has installed. Run where it is, it is waited for, and leaves itself.
    ExecWait '"$OldFolder\${UNINSTALLER}" /S _?=$OldFolder' $0
    ${If} $0 <> 0
      MessageBox MB_OK|MB_ICONSTOP "The version in $OldFolder could not be removed (status $0)." /SD IDOK
      !insertmacro QuitWith ${EXIT_OLD_VERSION_STAYS}
    ${EndIf}
    StrCpy $0 $OldFolder
    Call RemoveUninstaller
  ${EndIf}
SectionEnd

Section "Merivane" sectionProgram
  SectionIn RO
  SetOutPath $INSTDIR
  ${If} $Bits = 64
    !insertmacro InstallPrograms 64
  ${Else}
    !insertmacro InstallPrograms 32
  ${EndIf}
  !insertmacro InstallCommonFiles
  SetOutPath $INSTDIR
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  WriteRegStr SHCTX "${PROGRAM_KEY}" "InstallDir" $INSTDIR
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Merivane"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\merivane.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Brackenfold"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" $INSTDIR
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${sectionProgram} $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Entry in the Start menu" sectionStartMenu
  CreateShortcut "$SMPROGRAMS\Merivane.lnk" "$INSTDIR\merivane.exe"
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Chosen.STARTMENU" 1
SectionEnd

Section "Entry in the Send To menu" sectionSendTo
  CreateShortcut "$SENDTO\Merivane.lnk" "$INSTDIR\merivane.exe"
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Chosen.SENDTO" 1
SectionEnd

!macro AddMenuEntry CLASS
  WriteRegStr SHCTX "Software\Classes\${CLASS}\shell\Merivane" "" "Compare with Merivane"
  WriteRegStr SHCTX "Software\Classes\${CLASS}\shell\Merivane" "Icon" '"$INSTDIR\merivane.exe",0'
  ; A program is started for each of several selected files: those are Send To's.
  WriteRegStr SHCTX "Software\Classes\${CLASS}\shell\Merivane" "MultiSelectModel" "Single"
  WriteRegStr SHCTX "Software\Classes\${CLASS}\shell\Merivane\command" "" '"$INSTDIR\merivane.exe" "%1"'
!macroend

Section /o "Entry in the menu of files and folders" sectionMenu
  !insertmacro AddMenuEntry "*"
  !insertmacro AddMenuEntry "Directory"
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Chosen.MENU" 1
SectionEnd

Section /o "merivane-diff on the PATH" sectionPath
  StrCpy $0 "add"
  Call ChangePath
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "Chosen.PATH" 1
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${sectionProgram} "The program, its manual, and merivane-diff, the companion for the console."
  !insertmacro MUI_DESCRIPTION_TEXT ${sectionStartMenu} "Merivane among the programs of the Start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${sectionSendTo} "Two selected files or folders can be sent to Merivane. This is for your own account only."
  !insertmacro MUI_DESCRIPTION_TEXT ${sectionMenu} "Compare with Merivane, in the menu of the right mouse button: puts one file or folder into a window."
  !insertmacro MUI_DESCRIPTION_TEXT ${sectionPath} "merivane-diff and merivane can be typed in any console that is opened from now on."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Chosen OPTION SECTION DEFAULT: as the command line says, else as it was in the version before, else the default.
!macro Chosen OPTION SECTION DEFAULT
  StrCpy $1 ${DEFAULT}
  ${If} $OldFolder != ""
    StrCpy $1 0
    ReadRegDWORD $1 SHCTX "${UNINSTALL_KEY}" "Chosen.${OPTION}"
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/${OPTION}=" $2
  ${IfNot} ${Errors}
    StrCpy $1 $2
  ${EndIf}
  ${If} $1 = 1
    !insertmacro SelectSection ${SECTION}
  ${Else}
    !insertmacro UnselectSection ${SECTION}
  ${EndIf}
!macroend

; Where it goes and what is chosen, for $AllUsers.
Function takeScope
  ${If} $AllUsers = 1
    SetShellVarContext all
    StrCpy $INSTDIR $PROGRAMFILES32
    ${If} $Bits = 64
      StrCpy $INSTDIR $PROGRAMFILES64
    ${EndIf}
  ${Else}
    SetShellVarContext current
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs"
  ${EndIf}
  StrCpy $INSTDIR "$INSTDIR\Merivane"
  ReadRegStr $OldFolder SHCTX "${PROGRAM_KEY}" "InstallDir"
  ${If} $OldFolder != ""
    StrCpy $INSTDIR $OldFolder
  ${EndIf}
  ${If} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${EndIf}
  !insertmacro Chosen STARTMENU ${sectionStartMenu} 1
  IntOp $3 1 - $AllUsers
  !insertmacro Chosen SENDTO ${sectionSendTo} $3 ; there is none for all users
  !insertmacro Chosen MENU ${sectionMenu} 0
  !insertmacro Chosen PATH ${sectionPath} 0
FunctionEnd

Function .onInit
  ${IfNot} ${AtLeastWin7}
    MessageBox MB_OK|MB_ICONSTOP "Merivane needs Windows 7 or later." /SD IDOK
    !insertmacro QuitWith ${EXIT_OLD_SYSTEM}
  ${EndIf}
  !insertmacro ChooseBits
  ${If} $Bits = 64
    SectionSetSize ${sectionProgram} ${SIZE_64}
  ${Else}
    SectionSetSize ${sectionProgram} ${SIZE_32}
  ${EndIf}
  StrCpy $GivenFolder $INSTDIR
  StrCpy $AllUsers 0
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/ALLUSERS" $1
  ${IfNot} ${Errors}
    StrCpy $AllUsers 1
    Call hasRights
    ${If} ${Silent}
    ${AndIf} $0 <> 1
      !insertmacro QuitWith ${EXIT_NO_RIGHTS}
    ${EndIf}
  ${EndIf}
  Call takeScope
FunctionEnd

; $0: 1 if it may install for all users.
!macro DefineHasRights un
Function ${un}hasRights
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $0 1
  ${Else}
    StrCpy $0 0
  ${EndIf}
FunctionEnd
!macroend
!insertmacro DefineHasRights ""
!insertmacro DefineHasRights "un."

Function showScopePage
  !insertmacro MUI_HEADER_TEXT "Choose Users" "Choose for whom Merivane is installed."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 10u 100% 12u "Only for &me. Needs no administrator."
  Pop $1
  ${NSD_AddStyle} $1 ${WS_GROUP}
  ${NSD_CreateRadioButton} 0 28u 100% 12u "For &all users of this computer. Windows may ask for an administrator's consent."
  Pop $AllUsersRadio
  ${If} $AllUsers = 1
    ${NSD_Check} $AllUsersRadio
    ${NSD_SetFocus} $AllUsersRadio
  ${Else}
    ${NSD_Check} $1
    ${NSD_SetFocus} $1
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function leaveScopePage
  ${NSD_GetState} $AllUsersRadio $1
  ${If} $1 = ${BST_CHECKED}
    Call hasRights
    ${If} $0 <> 1
      ClearErrors
      ExecShell "runas" $EXEPATH "/ALLUSERS"
      ${If} ${Errors}
        MessageBox MB_OK|MB_ICONEXCLAMATION "Only an administrator can install Merivane for all users."
        Abort
      ${EndIf}
      Quit
    ${EndIf}
  ${EndIf}
  ${If} $1 <> $AllUsers
    StrCpy $AllUsers $1
    Call takeScope
  ${EndIf}
FunctionEnd

; By the desktop, so that it does not get the rights of an installer.
Function startProgram
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\merivane.exe"'
FunctionEnd

; Removing.

Section "un.Merivane" unsectionProgram
  SectionIn RO
  StrCpy $0 $INSTDIR
  Call un.WaitUntilClosed
  ReadRegStr $0 SHCTX "${PROGRAM_KEY}" "InstallDir"
  ${If} $0 == $INSTDIR ; or another version is the installed one
    ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "Chosen.PATH"
    ${If} $0 = 1
      StrCpy $0 "remove"
      Call un.ChangePath
    ${EndIf}
    ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "Chosen.STARTMENU"
    ${If} $0 = 1
      Delete "$SMPROGRAMS\Merivane.lnk"
    ${EndIf}
    ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "Chosen.SENDTO"
    ${If} $0 = 1
      Delete "$SENDTO\Merivane.lnk"
    ${EndIf}
    ReadRegDWORD $0 SHCTX "${UNINSTALL_KEY}" "Chosen.MENU"
    ${If} $0 = 1
      DeleteRegKey SHCTX "Software\Classes\*\shell\Merivane"
      DeleteRegKey SHCTX "Software\Classes\Directory\shell\Merivane"
    ${EndIf}
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    DeleteRegValue SHCTX "${PROGRAM_KEY}" "InstallDir"
    DeleteRegKey /ifempty SHCTX "${PROGRAM_KEY}"
    DeleteRegKey /ifempty SHCTX "Software\Brackenfold"
  ${EndIf}
  Delete "$INSTDIR\merivane.exe"
  Delete "$INSTDIR\merivane-diff.exe"
  !insertmacro RemoveCommonFiles
  ${If} $EXEDIR != $INSTDIR ; run where it is, it leaves itself
    StrCpy $0 $INSTDIR
    Call un.RemoveUninstaller
  ${EndIf}
SectionEnd

Section /o "un.My settings" unsectionSettings
  DeleteRegKey HKCU "${PROGRAM_KEY}\Settings"
  DeleteRegKey /ifempty HKCU "${PROGRAM_KEY}"
  DeleteRegKey /ifempty HKCU "Software\Brackenfold"
SectionEnd

!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${unsectionProgram} "What was installed. Files of your own in its folder stay."
  !insertmacro MUI_DESCRIPTION_TEXT ${unsectionSettings} "The options and lists of names of your account."
!insertmacro MUI_UNFUNCTION_DESCRIPTION_END

Function un.onInit
  !insertmacro ChooseBits
  StrCpy $AllUsers 0
  ReadRegStr $0 HKLM "${PROGRAM_KEY}" "InstallDir"
  ${If} $0 == $INSTDIR
    StrCpy $AllUsers 1
    SetShellVarContext all
    Call un.hasRights
    ${If} $0 <> 1
      ${IfNot} ${Silent}
        ExecShell "runas" "$INSTDIR\${UNINSTALLER}"
      ${EndIf}
      !insertmacro QuitWith ${EXIT_NO_RIGHTS}
    ${EndIf}
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/SETTINGS" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${unsectionSettings}
  ${EndIf}
FunctionEnd
