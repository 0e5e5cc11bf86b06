; The folder of the programs on the PATH. A PATH may be longer than any string of the installer, which would cut
; it off, so it is changed in memory of its own.

; ChangePath: puts $INSTDIR at the end of the PATH of the user, or where $AllUsers is 1 of the machine, or takes it
; away; $0 says "add" or "remove". What it does not understand it leaves alone.
!macro DefineChangePath un
Function ${un}ChangePath
  ${If} $AllUsers = 1
    StrCpy $1 0x80000002 ; HKEY_LOCAL_MACHINE
    StrCpy $2 "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
  ${Else}
    StrCpy $1 0x80000001 ; HKEY_CURRENT_USER
    StrCpy $2 "Environment"
  ${EndIf}
  System::Call 'advapi32::RegOpenKeyExW(p r1, w r2, i 0, i 3, *p .r3) i .r4'
  ${If} $4 <> 0
    Return
  ${EndIf}
  System::Call 'advapi32::RegQueryValueExW(p r3, w "Path", p 0, *i .r5, p 0, *i .r6) i .r4'
  ${If} $4 = 2 ; there is none
    StrCpy $4 0
    StrCpy $5 2 ; REG_EXPAND_SZ
    StrCpy $6 0
  ${EndIf}
  ${If} $4 = 0
  ${AndIf} $5 >= 1 ; REG_SZ
  ${AndIf} $5 <= 2
    ; $8: the PATH between two semicolons; $9: where it begins in there
    StrLen $7 $INSTDIR
    IntOp $8 $7 * 2
    IntOp $8 $8 + $6
    IntOp $8 $8 + 16
    System::Alloc $8
    Pop $8
    IntOp $9 $8 + 2
    System::Call 'kernel32::lstrcpyW(p r8, w ";")'
    ${If} $6 > 0
      System::Call 'advapi32::RegQueryValueExW(p r3, w "Path", p 0, p 0, p r9, *i r6) i .r4'
    ${EndIf}
    System::Call 'kernel32::lstrlenW(p r8) i .R1'
    IntOp $R1 $R1 - 1
    IntOp $R1 $R1 * 2
    IntOp $R1 $R1 + $8
    System::Call '*$R1(&i2 .R2)'
    ${If} $R2 <> 59
      System::Call 'kernel32::lstrcatW(p r8, w ";")'
    ${EndIf}
    StrCpy $R3 ";$INSTDIR;"
    System::Call 'shlwapi::StrStrIW(p r8, w R3) p .R4'
    StrCpy $R5 0 ; whether the PATH has changed
    ${If} $0 == "add"
    ${AndIf} $R4 = 0
      StrCpy $R3 "$INSTDIR"
      System::Call 'kernel32::lstrcatW(p r8, w R3)'
      StrCpy $R5 1
    ${ElseIf} $0 == "remove"
    ${AndIf} $R4 <> 0
      IntOp $R6 $7 + 1
      IntOp $R6 $R6 * 2
      IntOp $R6 $R6 + $R4
      System::Call 'kernel32::lstrlenW(p R6) i .R7'
      IntOp $R7 $R7 + 1
      IntOp $R7 $R7 * 2
      System::Call 'kernel32::RtlMoveMemory(p R4, p R6, p R7)'
      ${If} $R2 <> 59 ; the last semicolon was not there before
        System::Call 'kernel32::lstrlenW(p r8) i .R1'
        IntOp $R1 $R1 - 1
        IntOp $R1 $R1 * 2
        IntOp $R1 $R1 + $8
        System::Call '*$R1(&i2 0)'
      ${EndIf}
      StrCpy $R5 1
    ${EndIf}
    ${If} $R5 = 1
    ${AndIf} $4 = 0
      System::Call 'kernel32::lstrlenW(p r9) i .R1'
      ${If} $R1 > 0
        IntOp $R1 $R1 + 1
        IntOp $R1 $R1 * 2
        System::Call 'advapi32::RegSetValueExW(p r3, w "Path", i 0, i r5, p r9, i R1)'
      ${Else}
        System::Call 'advapi32::RegDeleteValueW(p r3, w "Path")'
      ${EndIf}
    ${EndIf}
    System::Free $8
  ${EndIf}
  System::Call 'advapi32::RegCloseKey(p r3)'
  SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=2000
FunctionEnd
!macroend
