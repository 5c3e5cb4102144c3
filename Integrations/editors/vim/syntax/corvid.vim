" Vim syntax file for text archives: one value a line, tabs for nesting, a label, a value.
if exists('b:current_syntax')
  finish
endif

syntax case match

" The first line holds TXT; any other first line is no header.
syntax match corvidHeader /\%1l^\%uFEFF\?.*TXT.*$/
syntax match corvidBadHeader /\%1l^\%(.*TXT\)\@!.*$/

syntax match corvidLabel /\%>1l^\s*\zs[!-~]\+/ nextgroup=corvidString,corvidBool,corvidVector,corvidNumber,corvidColor skipwhite
syntax match corvidRecord /\%>1l^\s*\zs[A-Za-z_][!-~]*\ze\s*$/
syntax match corvidRow /\%>1l^\s*\[.*\]\s*$/ contains=corvidNumber,corvidBracket

syntax match corvidString /"[^"]*"/ contained
syntax match corvidBadString /"[^"]*$/
syntax keyword corvidBool TRUE FALSE contained
syntax match corvidColor /\<\x\{1,8}\ze\s*$/ contained
syntax match corvidNumber /[-+]\?\<\d\+\%(\.\d\+\)\?\%([eE][-+]\?\d\+\)\?\>/ contained
syntax match corvidNumber /[-+]\?\<\%(inf\|infinity\|nan\)\>/ contained
syntax match corvidVector /\[.*\]/ contained contains=corvidNumber,corvidBracket
syntax match corvidBracket /[][,]/ contained

highlight default link corvidHeader PreProc
highlight default link corvidBadHeader Error
highlight default link corvidLabel Identifier
highlight default link corvidRecord Structure
highlight default link corvidString String
highlight default link corvidBadString Error
highlight default link corvidBool Boolean
highlight default link corvidColor Constant
highlight default link corvidNumber Number
highlight default link corvidBracket Delimiter

let b:current_syntax = 'corvid'
