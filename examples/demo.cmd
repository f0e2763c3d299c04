! make demo: zemok runs this command file with no typing:
!     zemok /C=demo.cmd /UC=vardene.ans
! The answers file vardene.ans describes one phase of polydisperse spheres
! (outer radius 40, width 4 to start with) and the synthetic curve
! synsphere.dat (radius 50, Schulz width 5, 3 percent noise).  fixed.inp
! leaves only the outer radius and the width free; B-F-G-S with simple
! bounds fits them inside the bounds of the answers file (radius 20 to 80,
! width 1 to 10), with half the evaluations the downhill simplex needs.
MESSAGE,1
PROBLEM,USER
LOAD,FILE=fixed.inp,IFIXER
METHOD,SB
RUN
REPORT,TERMINAL,DATA
! At message level 11 EVALUATE writes synsphere.fit, .pam, .str, the log
! vardene.log and the picture synsphere.svg, and shows the result table.
MESSAGE,11
EVALUATE
EXIT
