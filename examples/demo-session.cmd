! A short session at the ZEMOK prompt, typed by `make demo`.
! Lines beginning with "!", "#" or "~" are comments and do nothing.
FOO,BAR
EXIT
