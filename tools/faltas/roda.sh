#!/bin/bash
# roda.sh REPO OUTDIR: runs both test programs with no fault and with each of the twelve.
repo=$1; out=$2; mkdir -p $out
cd $repo/build
for n in 0 1 2 3 4 5 6 7 8 9 10 11 12; do
  : > $out/F$n.txt
  for exe in tests/vexa_tests tests/vexa_ui_tests; do
    VEXA_FALTA=$n QT_QPA_PLATFORM=offscreen timeout 1500 $exe --gtest_brief=1 2>/dev/null | grep '^\[  FAILED  \]' | grep -v 'listed below' | sed 's/^\[  FAILED  \] //; s/ (.*//; s/, where.*//' >> $out/F$n.txt
  done
  sort -u -o $out/F$n.txt $out/F$n.txt
  echo "F$n: $(wc -l < $out/F$n.txt) failing"
done
