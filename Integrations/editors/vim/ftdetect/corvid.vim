" Text archives only: a binary one begins with BIN.
autocmd BufNewFile,BufRead *.mesh,*.particle,*.brushes,*.entity
    \ if getline(1) =~# 'TXT' | setfiletype corvid | endif
