; What the user may do, and doing more after Windows has asked him.

; A structure of the system has a gap before a pointer with 64 bits.
!if ${NSIS_PTR_SIZE} > 4
  !define GAP "i,"
!else
  !define GAP ""
!endif
!define EXECUTE_INFO "&l4, i 0x40, p $HWNDPARENT, t 'runas', t s, t s, p 0, i 1, ${GAP} p, p, p, p, i, ${GAP} p, p"

!macro rights un
Function ${un}MayChangeSystem  ; yes or no in $0
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $0 yes
  ${Else}
    StrCpy $0 no
  ${EndIf}
FunctionEnd

; Runs this program file once more as an administrator, with the arguments in $1; its exit code in $0, empty where
; Windows or the user has refused.
Function ${un}RunAsAdministrator
  Push $2
  Push $3
  Push $4
  Push $1
  Push $EXEPATH
  System::Call "*(${EXECUTE_INFO}) p.r2"
  System::Call 'shell32::ShellExecuteExW(p r2) i.r3'
  StrCpy $0 ""
  ${If} $3 <> 0
    System::Call "*$2(&l4, i, p, p, p, p, p, i, ${GAP} p, p, p, p, i, ${GAP} p, p.r4)"
    System::Call 'kernel32::WaitForSingleObject(p r4, i -1)'
    System::Call 'kernel32::GetExitCodeProcess(p r4, *i.r0)'
    System::Call 'kernel32::CloseHandle(p r4)'
  ${EndIf}
  System::Free $2
  Pop $4
  Pop $3
  Pop $2
FunctionEnd
!macroend

!insertmacro rights ""
!insertmacro rights "un."

; Whether the user's other programs have fewer rights than this one: yes or no in $0. What this one starts has its
; rights too.
Function HasRightsOfItsOwn
  Push $1
  StrCpy $1 0
  System::Call 'kernel32::GetCurrentProcess() p.s'
  System::Call 'advapi32::OpenProcessToken(p s, i 8, *p.r0)'
  System::Call 'advapi32::GetTokenInformation(p r0, i 18, *i r1 r1, i 4, *i)'
  System::Call 'kernel32::CloseHandle(p r0)'
  ClearErrors
  ReadRegDWORD $0 HKLM "Software\Microsoft\Windows\CurrentVersion\Policies\System" "EnableLUA"
  ${If} ${Errors}
    StrCpy $0 0
  ${EndIf}
  ${If} $0 <> 0
  ${AndIf} $1 = 2
    StrCpy $0 yes
  ${Else}
    StrCpy $0 no
  ${EndIf}
  Pop $1
FunctionEnd
