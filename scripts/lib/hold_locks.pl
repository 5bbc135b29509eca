#!/usr/bin/env perl
# hold_locks.pl SECONDS FILE...: holds the locks that apt and dpkg take on these files, as another apt would, and lets go.
# In Perl because flock(1) makes locks of another kind, and every Debian system has this interpreter.
use strict;
use warnings;
use Fcntl qw(F_SETLK F_WRLCK SEEK_SET O_RDWR O_CREAT);

my ($seconds, @files) = @ARGV;
my @open;
for my $file (@files) {
  sysopen(my $handle, $file, O_RDWR | O_CREAT, 0640) or die "$file: $!\n";
  # struct flock of 64-bit Linux: type, whence, start, length (0: all of it), owner.
  my $lock = pack('s s x4 q q i x4', F_WRLCK, SEEK_SET, 0, 0, 0);
  fcntl($handle, F_SETLK, $lock) or die "$file: $!\n";
  push @open, $handle;
}
sleep $seconds;
