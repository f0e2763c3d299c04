! make demo: zemok runs this command file with no typing (/C=demo.cmd).
! Rosenbrock's function from its standard start (-1, 0.8), minimized by the
! downhill simplex of Nelder and Mead; questions take their defaults.
MESSAGE,1
PROBLEM,TEST,1
METHOD,N-M
RUN
! The whole data set, then the function value at the point reached
REPORT,TERMINAL,DATA
EVALUATE
EXIT
