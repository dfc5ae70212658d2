; The Windows installer. tools/package.sh compiles it and defines:
;   VERSION   a.b.c
;   FILES     list of commands that put every file into $INSTDIR
;   REMOVAL   list of commands that remove them, and the folders that they leave empty
;   LICENSE   the licence to show
;   OUTPUT    the installer
;
; Options: /S without questions, /AllUsers or /CurrentUser (default: for all where the user may, or as installed
; before), /D=FOLDER (last). Exit codes: 0 done, 1 ended by the user, 2 not done.

Unicode true
SetCompressor /SOLID lzma
ManifestDPIAware true
Name "ZYNVue"
Caption "ZYNVue ${VERSION}"
OutFile "${OUTPUT}"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\ZYNVue"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "ZYNVue"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!include "MultiUser.nsh"
!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "ZYNVue"
VIAddVersionKey "ProductVersion" "${VERSION}.0"
VIAddVersionKey "FileDescription" "ZYNVue installer"
VIAddVersionKey "FileVersion" "${VERSION}.0"
VIAddVersionKey "CompanyName" "${AUTHORS}"
VIAddVersionKey "LegalCopyright" "Copyright ${AUTHORS}. MIT licence."

; Says why and ends; without questions only the exit code says it.
!macro GiveUp Reason
  MessageBox MB_OK|MB_ICONSTOP "${Reason}" /SD IDOK
  SetErrorLevel 2
  Quit
!macroend

; A DLL that a program has loaded cannot be opened for writing.
!macro GiveUpIfInUse Folder Dll
  ${If} ${FileExists} "${Folder}\bin\${Dll}"
    ClearErrors
    FileOpen $R1 "${Folder}\bin\${Dll}" a
    ${If} ${Errors}
      !insertmacro GiveUp "A program uses ${Dll}. End it, then start again. Nothing has been changed."
    ${EndIf}
    FileClose $R1
  ${EndIf}
!macroend

!macro GiveUpIfAnyInUse Folder
  !insertmacro GiveUpIfInUse "${Folder}" "ZYNVue.dll"
  !insertmacro GiveUpIfInUse "${Folder}" "ZYNModeleGeom.dll"
!macroend

; The exit code of regsvr32 goes to $R1.
!macro Regsvr32 Options Dll
  ${If} $MultiUser.InstallMode == "CurrentUser"
    ExecWait '"$SYSDIR\regsvr32.exe" /s /n /i:user ${Options} "$INSTDIR\bin\${Dll}"' $R1
  ${Else}
    ExecWait '"$SYSDIR\regsvr32.exe" /s ${Options} "$INSTDIR\bin\${Dll}"' $R1
  ${EndIf}
!macroend

!macro RegisterOrGiveUp Dll
  !insertmacro Regsvr32 "" "${Dll}"
  ${If} $R1 <> 0
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    !insertmacro GiveUp "${Dll} cannot be registered (regsvr32 answers $R1)."
  ${EndIf}
!macroend

Function .onInit
  ${If} ${Silent}
    ; Without this, a question would come up all the same.
    UserInfo::GetAccountType
    Pop $R1
    ${GetParameters} $R2
    ${GetOptions} $R2 "/AllUsers" $R3
    ${IfNot} ${Errors}
    ${AndIf} $R1 != "Admin"
      !insertmacro GiveUp ""
    ${EndIf}
  ${EndIf}
  StrCpy $R0 $INSTDIR ; of the option /D
  !insertmacro MULTIUSER_INIT
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
FunctionEnd

; Removes the version that is installed, wherever it is, so that the new one does not mix with it.
Function RemoveInstalled
  ReadRegStr $R0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $R0 == ""
  ${OrIfNot} ${FileExists} "$R0\uninstall.exe"
    Return
  ${EndIf}
  !insertmacro GiveUpIfAnyInUse "$R0"
  ExecWait '"$R0\uninstall.exe" /S _?=$R0' $R1
  ${If} $R1 <> 0
    !insertmacro GiveUp "The installed version cannot be removed (exit code $R1)."
  ${EndIf}
  Delete "$R0\uninstall.exe"
  RMDir "$R0"
FunctionEnd

Function RecordInstallation
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "ZYNVue"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "${AUTHORS}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  ${GetSize} "$INSTDIR" "/S=0K" $R1 $R2 $R3
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $R1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
FunctionEnd

Section
  Call RemoveInstalled
  !insertmacro GiveUpIfAnyInUse "$INSTDIR"
  AllowSkipFiles off
  !include "${FILES}"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  Call RecordInstallation
  !insertmacro RegisterOrGiveUp "ZYNModeleGeom.dll"
  !insertmacro RegisterOrGiveUp "ZYNVue.dll"
SectionEnd

; Not every file could be written.
Function .onInstFailed
  SetOutPath "$TEMP"
  !include "${REMOVAL}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
FunctionEnd

; The uninstaller takes away what its own installation made: the user's, where that is recorded for this folder.
Function un.onInit
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $R0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $R0 == $INSTDIR
    Call un.MultiUser.InstallMode.CurrentUser
  ${Else}
    Call un.MultiUser.InstallMode.AllUsers
  ${EndIf}
FunctionEnd

Section Uninstall
  !insertmacro GiveUpIfAnyInUse "$INSTDIR"
  !insertmacro Regsvr32 "/u" "ZYNVue.dll"
  !insertmacro Regsvr32 "/u" "ZYNModeleGeom.dll"
  SetOutPath "$TEMP" ; a folder that is current cannot be removed
  !include "${REMOVAL}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ${If} $MultiUser.InstallMode == "CurrentUser"
    ; Shared keys, of which the user may have had none before.
    DeleteRegKey /ifempty HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall"
    DeleteRegKey /ifempty HKCU "Software\Classes\CLSID"
    DeleteRegKey /ifempty HKCU "Software\Classes\Interface"
    DeleteRegKey /ifempty HKCU "Software\Classes\TypeLib"
  ${EndIf}
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  ${If} $EXEDIR != $INSTDIR
    ; The folder of the copy that does this, once the copy is gone: NSIS has it removed before, and in vain.
    RMDir /REBOOTOK "$EXEDIR"
  ${EndIf}
SectionEnd
