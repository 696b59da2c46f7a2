# What a copyright file of Debian's machine-readable format says of some files, for packages whose whole text is out of
# proportion to what is taken from them: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
package CopyrightPart;
use strict;
use warnings;
use Exporter 'import';
our @EXPORT_OK = qw(copyright_part);

# copyright_part(TEXT, FILE...): the text's head, its paragraphs on these files with their other files left out, and the
# licences that those name. A file is given as it is included; the text names it by a path that ends with
# include/FILE, and its last paragraph counts, as the format has it. Undefined when one of the files is named in no
# paragraph by such a path, or a licence is named whose text is nowhere: then only the whole text tells all.
sub copyright_part {
    my ($text, @files) = @_;
    my ($head, @paragraphs) = split /\n\n+/, $text =~ s/\s+\z//r;
    $head =~ /^Format: .*copyright-format\/1\.0/ or return undef;
    $head =~ s/^Files-Excluded:.*\n(?:[ \t].*\n?)*//m;
    $head =~ s/\s+\z//;
    my (%licence, %of, @named);
    for my $paragraph (@paragraphs) {
        if ($paragraph =~ /^Files:[ \t]*((?:.*\n)(?:[ \t].*\n)*)/) {
            m{(?:^|/)include/(.+)$} and $of{$1} = @named for split ' ', $1;
            push @named, $paragraph;
        } elsif ($paragraph =~ /^License: *(\S+)/) {
            $licence{$1} = $paragraph;
        }
    }
    my (%taken, %wanted);
    for (@files) {
        defined $of{$_} or return undef;
        push @{$taken{$of{$_}}}, $_;
    }
    my @part = ($head);
    for my $index (sort { $a <=> $b } keys %taken) {
        my $paragraph = $named[$index];
        my $files = join "\n ", 'Files:', sort @{$taken{$index}};
        $paragraph =~ s/^Files:.*\n(?:[ \t].*\n)*/$files\n/;
        push @part, $paragraph;
        # A licence whose text follows its name at once needs no paragraph of its own.
        my ($names, $own) = $paragraph =~ /^License: *(.*)((?:\n .*)*)/m or return undef;
        $own or $wanted{$_} = 1 for grep { !/^(and|or|with)$/i } $names =~ /[^\s,]+/g;
    }
    exists $licence{$_} or return undef for keys %wanted;
    return join("\n\n", @part, map { $licence{$_} } sort keys %wanted) . "\n";
}

1;
