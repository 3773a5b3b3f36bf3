; HOST.COM COUNT WHAT: plays the host. So many times it writes DRUCK.OUT, calls KRVWINPR.COM with the command tail of TAIL.TXT,
; waits for KRVWINPR.OK as a directory has it, and deletes it. It says a line each time: errorlevel, completion file (0 or 1),
; keys that are left (0 or 1), and the time from the call until then in clocks of 1,193,182 Hz, hexadecimal.
; WHAT happens at the fifth idle call: K a key is pressed, B Ctrl-C; T the clock is a minute off, and right again at the tenth.
; A: a key was pressed before the call. D: the drive is not ready for the order. -: nothing.
cpu 8086
org 100h
        mov     bx, (program_end - $$ + 100h + 256 + 15) / 16
        mov     sp, program_end + 256
        mov     ah, 4Ah
        int     21h
        cld
        mov     si, 81h
        call    number
        mov     [count], dx
        lodsb
        mov     [what], al
        mov     dx, tail_name
        mov     ax, 3D00h
        int     21h
        mov     bx, ax
        mov     dx, tail + 1
        mov     cx, 127
        mov     ah, 3Fh
        int     21h
        mov     [tail], al
        mov     di, ax
        mov     byte [tail + 1 + di], 13
        call    close
        mov     ax, 3521h
        int     21h
        mov     [dos], bx
        mov     [dos + 2], es
        mov     al, 28h
        int     21h
        mov     [idle], bx
        mov     [idle + 2], es
        push    cs
        pop     es
        mov     dx, on_dos
        mov     ax, 2521h
        int     21h
        mov     dx, on_idle
        mov     al, 28h
        int     21h
        mov     al, 34h                 ; counts down once in a tick
        call    set_counter

job:    inc     word [done]
        mov     ax, [done]
        mov     di, text.number + 3
.digit: xor     dx, dx
        mov     cx, 10
        div     cx
        add     dl, '0'
        mov     [di], dl
        dec     di
        cmp     di, text.number
        jae     .digit
        mov     dx, print_name
        call    create
        mov     dx, text
        mov     cx, text.end - text
        call    write
        call    close
        mov     word [idle_calls], 0
        cmp     byte [what], 'A'
        jne     .call
        call    press
.call:  call    now
        mov     [begin], ax
        mov     [begin + 2], dx
        mov     ax, cs
        mov     [parameters + 4], ax
        mov     [parameters + 8], ax
        mov     [parameters + 12], ax
        mov     bx, parameters
        mov     dx, program_name
        mov     ax, 4B00h
        int     21h
        mov     ah, 4Dh
        int     21h
        add     al, '0'
        mov     [line], al
        mov     byte [line + 2], '1'
        mov     bp, 5000                ; looks
.look:  mov     dx, ok_name
        xor     cx, cx
        mov     ah, 4Eh
        int     21h
        jnc     .there
        mov     byte [line + 2], '0'
        cmp     byte [line], '0'
        jne     .there
        dec     bp
        jnz     .look
.there: call    now
        sub     ax, [begin]
        sbb     dx, [begin + 2]
        mov     di, line + 6
        push    ax
        mov     ax, dx
        call    hexadecimal
        pop     ax
        call    hexadecimal
        mov     byte [line + 4], '0'
.key:   mov     ah, 1
        int     16h
        jz      .keys
        mov     ah, 0
        int     16h
        mov     byte [line + 4], '1'
        jmp     .key
.keys:  mov     dx, ok_name
        mov     ah, 41h
        int     21h
        mov     bx, 1
        mov     dx, line
        mov     cx, 16
        call    write
        mov     ax, [done]
        cmp     ax, [count]
        jb      job
        mov     al, 36h
        call    set_counter
        lds     dx, [cs:idle]
        mov     ax, 2528h
        int     21h
        lds     dx, [cs:dos]
        mov     al, 21h
        int     21h
        mov     ax, 4C00h
        int     21h

on_idle:
        push    ax
        push    cx
        push    dx
        inc     word [cs:idle_calls]
        mov     ax, [cs:idle_calls]
        cmp     ax, 5
        jne     .end
        cmp     byte [cs:what], 'K'
        je      .press
        cmp     byte [cs:what], 'B'
        jne     .end
        int     23h
        jmp     .end
.press: call    press
.end:   pop     dx
        pop     cx
        pop     ax
        iret

; DOS, with its clock, and with a drive that has a critical error.
on_dos: cmp     ah, 5Bh
        je      .make
        cmp     ah, 2Ch
        jne     .dos
        cmp     byte [cs:what], 'T'
        jne     .dos
        pushf
        call    far [cs:dos]
        cmp     word [cs:idle_calls], 5
        jb      .end
        cmp     word [cs:idle_calls], 10
        ja      .end
        xor     cl, 1
.end:   iret
.make:  cmp     byte [cs:what], 'D'
        jne     .dos
        push    di
        mov     di, 2
        int     24h
        pop     di
        mov     ah, 0
        add     ax, 50h                 ; 53h where it is to fail
        push    bp
        mov     bp, sp
        or      byte [bp + 6], 1        ; carry
        pop     bp
        iret
.dos:   jmp     far [cs:dos]

press:  mov     cx, 1E61h
        mov     ah, 5
        int     16h
        ret

; DX:AX: clocks since midnight, in ticks of 65536.
now:    push    es
        mov     ax, 40h
        mov     es, ax
.again: mov     dx, [es:6Ch]
        mov     al, 0
        out     43h, al
        in      al, 40h
        mov     ah, al
        in      al, 40h
        xchg    al, ah
        cmp     dx, [es:6Ch]
        jne     .again
        neg     ax
        pop     es
        ret

set_counter:
        out     43h, al
        mov     al, 0
        out     40h, al
        out     40h, al
        ret

; DX: the number at SI, which goes behind it and the blank that follows.
number: xor     dx, dx
.next:  lodsb
        cmp     al, ' '
        je      .blank
        sub     al, '0'
        cbw
        xchg    ax, dx
        mov     cx, 10
        push    dx
        mul     cx
        pop     dx
        add     dx, ax
        jmp     .next
.blank: test    dx, dx
        jz      .next
        ret

hexadecimal:
        mov     bx, 4
.digit: mov     cl, 4
        rol     ax, cl
        push    ax
        and     al, 0Fh
        add     al, 90h
        daa
        adc     al, 40h
        daa
        stosb
        pop     ax
        dec     bx
        jnz     .digit
        ret

create: xor     cx, cx
        mov     ah, 3Ch
        int     21h
        mov     bx, ax
        ret

write:  mov     ah, 40h
        int     21h
        ret

close:  mov     ah, 3Eh
        int     21h
        ret

tail_name:      db "TAIL.TXT", 0
print_name:     db "DRUCK.OUT", 0
ok_name:        db "KRVWINPR.OK", 0
program_name:   db "KRVWINPR.COM", 0
text:           db "Auftrag "
text.number:    db "0000", 13, 10
text.end:
line:           db "0 0 0 00000000", 13, 10
parameters:     dw 0, tail, 0, 5Ch, 0, 6Ch, 0
count:          dw 0
done:           dw 0
begin:          dw 0, 0
dos:            dw 0, 0
idle:           dw 0, 0
idle_calls:     dw 0
what:           db 0
tail:
program_end     equ tail + 130
