#!/bin/sh
# check_signatures.sh SOURCE_DIR: fails on a SIGNAL() or SLOT() that Qt would have to normalize at run time.
cd "$1" || exit 1
! grep -rnE '(SIGNAL|SLOT)\([^)]*(, |const [A-Za-z]+&)' src client tests --include='*.cpp' --include='*.h'
