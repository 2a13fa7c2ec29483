# shellcheck shell=bash disable=SC2034,SC2154
# To be sourced: the last look at a station's data directory, when its workstation has ended.

# books_agree: whether the books of $data agree, by the program in $bin; what they say where they do not.
books_agree()
{
    if "$bin/velda-books" "$data" > "$data.books"; then
        echo "same: the books ($(grep -c '^Книги' "$data.books"))"
    else
        echo "DIFFERENT: the books"
        cat "$data.books"
        failed=1
    fi
}
