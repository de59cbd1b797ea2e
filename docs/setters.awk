# A comment over a reading function covers the writing one that stands right below it. Doxygen wants one for each: this
# gives the second a pointer to the first.
{
    if ($0 ~ /^ *(virtual )?void Set[A-Za-z0-9]+\(/ && previous ~ /\) const( override)?;( .*)?$/) {
        reader = previous
        sub(/\(\) const.*$/, "", reader)
        sub(/^.*[ *&]/, "", reader)
        indent = $0
        sub(/[^ ].*$/, "", indent)
        print indent "/// Sets what " reader "() tells; see there."
    }
    print
    previous = $0
}
