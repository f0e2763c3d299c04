! A short session at the ZEMOK prompt, typed by `make demo`.
! Lines beginning with "!", "#" or "~" are comments and do nothing.
PROBLEM,TEST,LIST
N
! Wood's function: it announces itself and asks for a constant to add (CR: none)
PROBLEM,TEST,3

METHOD,N-M
MESSAGE,5
SET,GRADIENT,2
TIME
FOO,BAR
! EXIT after an evaluation asks whether you are sure of the solution
EXIT
Y
Y
