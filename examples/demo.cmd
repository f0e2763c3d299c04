! make demo: zemok runs this command file with no typing:
!     zemok /C=demo.cmd /UC=vardene.ans
! The answers file vardene.ans describes one phase of polydisperse spheres
! (outer radius 40, width 4 to start with) and the synthetic curve
! synsphere.dat (radius 50, Schulz width 5, 3 percent noise).  fixed.inp
! leaves only the outer radius and the width free; the downhill simplex
! fits them.
MESSAGE,1
PROBLEM,USER
LOAD,FILE=fixed.inp,IFIXER
METHOD,N-M
RUN
REPORT,TERMINAL,DATA
! At message level 11 EVALUATE writes synsphere.fit, .pam, .str, the log
! vardene.log and the picture synsphere.svg, and shows the result table.
MESSAGE,11
EVALUATE
EXIT
