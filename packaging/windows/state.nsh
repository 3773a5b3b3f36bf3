; What the parts of the installer share.

; Exit codes; 1 is the user's own cancelling.
!define FAILED 2        ; files could not be written; what was there before is still there
!define WRONG_CALL 3
!define NO_RIGHTS 4
!define HOST_REFUSED 5  ; the host's folder, or the messenger in it
!define NEWER_THERE 6
!define OLD_SYSTEM 7

Var Mode           ; for whom: "alle" or "benutzer"
Var WishedMode     ; by the command line; empty for none
Var HostKind       ; "WINDOWS", "EMULATOR", or empty for later
Var HostFolder
Var WishedHost     ; yes where the command line says something about the host
Var MayGoBack      ; yes: an older version may take a newer one's place
Var WithData       ; yes: the user's settings and kept jobs go as well
Var Inner          ; yes: run with more rights by another one of these, which has asked everything
Var GivenFolder    ; of the command line's /D=

Var OldVersion     ; of what is installed for $Mode; empty for nothing
Var OldFolder
Var OldHostKind
Var OldHostFolder

Var Problem        ; in words; empty where there is none
Var ProblemCode
Var MessengerRan   ; yes: it was ended, and is to run again

; The system's own registry, not the part of it that a 64-bit Windows shows to programs for 32 bits.
!macro useOwnRegistry
!if ${NSIS_PTR_SIZE} <= 4
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
!endif
!macroend

!macro applyMode
  ${If} $Mode == "alle"
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
!macroend
