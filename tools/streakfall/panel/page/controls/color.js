// A colour: a swatch that opens the browser's picker, and its hex.
import { make } from '../core/dom.js';
import { text } from '../core/language.js';
import { tell } from '../core/notice.js';

/** "#rrggbb" of what was typed, also "f80" and full-width; null when it is no colour. */
function parseHex(typed) {
  const [, digits] = /^#?([0-9a-f]{3}|[0-9a-f]{6})$/.exec(
    typed.normalize('NFKC').trim().toLowerCase()) ?? [];
  if (!digits) return null;
  return `#${digits.length === 3 ? digits.replace(/./g, '$&$&') : digits}`;
}

export function colorFields(param, control) {
  const swatch = make('input', { type: 'color' });
  const hex = make('input', { type: 'text', className: 'number hex', maxLength: 9,
    autocomplete: 'off', spellcheck: false });
  control.label(swatch, 'swatch');
  control.label(hex, 'hex');
  swatch.show = () => {
    swatch.value = control.get();
  };
  hex.show = () => {
    if (document.activeElement !== hex) hex.value = control.get();
  };
  swatch.addEventListener('input', (event) => control.drag(swatch.value, event));
  for (const end of ['change', 'blur']) { // the picker is closed, with another colour or the same
    swatch.addEventListener(end, (event) => control.settle(event));
  }

  function take(event) {
    const color = parseHex(hex.value);
    if (!color) tell(text('noColour', { typed: hex.value }));
    else if (color !== control.get()) control.set(color, event);
    hex.value = control.get();
  }
  hex.addEventListener('change', take);
  hex.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') hex.value = control.get();
  });
  return [swatch, hex];
}
