# fixed_time.pl TYPE-LIBRARY: widl writes down when it ran, as text and as a number; puts the start of 1970 in both
# places, so that the same source always makes the same file.
use strict;
use warnings;

my ($path) = @ARGV;
open(my $in, '<:raw', $path) or die "$path: $!";
my $library = do { local $/; <$in> };
close($in);
my $places = $library =~ s/ at \w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\n(W*\x13\0).{4}/ at Thu Jan  1 00:00:00 1970\n$1\0\0\0\0/gs;
die "$path: no time of making found" unless $places == 1;
open(my $out, '>:raw', $path) or die "$path: $!";
print $out $library;
close($out) or die "$path: $!";
