# shellcheck shell=bash
# The false clock of the days at speed.

# A program that was killed under it leaves its shared memory behind, and a clock that gets the same process number
# would not start.
forget_dead_clocks()
{
    local left
    for left in /dev/shm/sem.faketime_sem_* /dev/shm/faketime_shm_*; do
        [ -d "/proc/${left##*_}" ] || rm -f "$left"
    done
}
