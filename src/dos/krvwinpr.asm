; KRVWINPR.COM: what a host in an emulator calls where it would call KRVWinPr. It leaves the call as an order in the current
; directory, waits for the messenger's answer, and lets the host go on; docs/MESSENGER.md has the files between the two.
;
; DOS 3.3 and an 8086 are enough: calls of DOS and the two idle interrupts, nothing of one emulator, no ports, no BIOS data.
; Routines may change all registers but CS, DS, ES, SS and SP; they return errors of DOS as DOS does, with carry and AX.
cpu 8086
org 100h

        jmp     short start
        db      13, 10, "KRVWINPR.COM ", KRV_VERSION, 13, 10, 1Ah   ; what TYPE shows

start:  cld
        push    cs
        pop     ds
        push    cs
        pop     es
        mov     di, image_end
        mov     cx, cleared_end - image_end
        mov     al, 0
        rep     stosb
        cmp     sp, memory_end + 200h
        jb      no_memory
        call    catch_interruptions
        call    read_environment
        call    watch_keyboard
        call    leave_order
        call    await_answer            ; AL: its letter
        cmp     al, 'N'
        je      succeed
        cmp     al, 'O'
        jne     refused
        call    rewrite_completion
        mov     si, text_completion
        jc      fail_with_reason
succeed:
        mov     ax, 4C00h
        int     21h

refused:
        mov     dx, answer + ANSWER_HEAD
        mov     cx, [answer_length]
        sub     cx, ANSWER_HEAD
        call    write_out
        mov     si, text_nothing
        jmp     short fail_without_completion

; Here there is not even room to put a text together.
no_memory:
        mov     ax, NO_MEMORY
        call    reason_of
        mov     dx, si
        mov     cx, text_error.end - text_error
        call    write_out
        jmp     short fail.end

; Ends with the text SI and the reason of the error AX.
fail_with_reason:
        push    ax
        call    say
        pop     ax
        call    reason_of
        jmp     short fail

; Ends with the text SI. A completion file can only be that of an earlier job.
fail_without_completion:
        push    si
        mov     dx, name_completion
        call    remove
        pop     si
fail:   call    say
.end:   mov     ax, 4C01h
        int     21h

%include "system.inc"
%include "order.inc"
%include "answer.inc"
%include "texts.inc"

; Memory behind the image.
image_end:
critical_error  equ image_end           ; what the drive reported, as an error of DOS
program         equ critical_error + 2  ; where this program's path is, if DOS says it
broken          equ program + 4         ; Ctrl-C was pressed
keys_count      equ broken + 1
folder          equ keys_count + 1      ; "C:\FIRMA" and 0, as long as DOS has them
rounds          equ folder + 68         ; of the next pause
cleared_end     equ rounds + 2          ; so far it is 0 at first
seconds         equ cleared_end         ; since start_clock
hundredths      equ seconds + 2
last_time       equ hundredths + 2
answer_length   equ last_time + 2
runs            equ answer_length + 2   ; never set: counts on from call to call
order           equ runs + 1
found           equ order + 288         ; with a command of 127 characters and the longest folder
answer          equ found + 44
message         equ answer + ANSWER_ROOM
memory_end      equ message + 384
