# Not where an update removes what it replaced.
if [ "$1" = 0 ]; then
    /usr/bin/tavqz register --remove >/dev/null ||
        echo "The registration of the asset provider could not be taken away" >&2
fi
