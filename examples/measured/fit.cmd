! The core-shell example: zemok /C=fit.cmd /UC=coreshell.ans
! coreshell.ans describes one phase of core-shell spheres (core 16, outer
! radius 34, width 3 to start with) and the curve coreshell.dat (core 20,
! radius 40, Schulz width 4, 2 percent noise; q in 1/nm).  free.inp leaves
! the core radius, the outer radius and the width free.
MESSAGE,1
PROBLEM,USER
LOAD,FILE=free.inp,IFIXER
METHOD,N-M
RUN
REPORT,TERMINAL,DATA
! MESSAGE,11 and EVALUATE write coreshell.fit, .pam, .str, .csv, the log
! vardene.log and the picture coreshell.svg, and show the result table.
MESSAGE,11
EVALUATE
EXIT
