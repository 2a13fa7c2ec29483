// The image FW_BLINK: a board that has been loaded well blinks. It toggles PB5, the pin with the light of
// the usual ATmega328P boards, twice a second. scripts/make-blink.sh makes blink.hex of it.

#include <avr/io.h>
#include <util/delay.h>

int main(void)
{
    DDRB |= _BV(DDB5);
    for (;;) {
        PORTB ^= _BV(PORTB5);
        _delay_ms(250);
    }
}
