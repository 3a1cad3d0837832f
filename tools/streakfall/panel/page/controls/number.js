// A number that is typed, dragged sideways or stepped. It takes the whole valid range.
import { arrow, clamp, followPointer, make, pace } from '../core/dom.js';
import { text } from '../core/language.js';
import { tell } from '../core/notice.js';

const dragStart = 3; // screen pixels before a press becomes a drag
const dragPixels = 2; // screen pixels a step

/** As short as it can be said, at most `digits` behind the point. */
export const shortNumber = (value, digits = 3) => String(Number(value.toFixed(digits)));

/** A number as typed: also full-width digits and a comma; NaN for anything else. */
export function parseNumber(typed) {
  const plain = typed.normalize('NFKC').trim().replace(',', '.').replace(/^−/, '-');
  return plain === '' ? NaN : Number(plain);
}

/** `range`: [least, most] or null; `step` of an arrow key; `whole` numbers or not. */
function tidy(value, { range, whole }) {
  const rounded = whole ? Math.round(value) : Math.round(value * 1e6) / 1e6;
  return range ? clamp(rounded, range[0], range[1]) : rounded;
}

/** One step from a value, by an arrow key's event. */
export function stepped(value, event, options) {
  const by = arrow(event) * pace(event) * options.step;
  return tidy(value + (options.whole ? Math.sign(by) * Math.max(1, Math.abs(by)) : by), options);
}

/**
 * The field. `options`: range, step, whole; `get()`, `drag(value, event)`, `settle(event)`,
 * `set(value, event)`. Its `show()` takes the value in from `get()`.
 */
export function numberField(options) {
  const field = make('input', { type: 'text', inputMode: 'decimal', className: 'number',
    role: 'spinbutton', autocomplete: 'off', spellcheck: false });
  if (options.range) [field.ariaValueMin, field.ariaValueMax] = options.range.map(String);

  field.show = () => {
    const value = options.get();
    field.ariaValueNow = String(value);
    if (field.dataset.typed === undefined) field.value = shortNumber(value, options.digits);
  };

  function take(event) {
    const typed = field.dataset.typed;
    delete field.dataset.typed;
    if (typed !== undefined) {
      const value = parseNumber(typed);
      if (Number.isFinite(value)) options.set(tidy(value, options), event);
      else tell(text('noNumber', { typed }));
    }
    field.show();
  }

  field.addEventListener('input', () => {
    field.dataset.typed = field.value;
  });
  field.addEventListener('blur', take);
  field.addEventListener('keydown', (event) => {
    if (event.key === 'Enter') {
      take(event);
      field.select();
    } else if (event.key === 'Escape') {
      delete field.dataset.typed;
      field.show();
    } else if (['ArrowUp', 'ArrowDown'].includes(event.key) && arrow(event)) {
      event.preventDefault();
      take(event);
      options.drag(stepped(options.get(), event, options), event);
    }
  });
  field.addEventListener('keyup', (event) => {
    if (event.key === 'ArrowUp' || event.key === 'ArrowDown') options.settle(event);
  });

  field.addEventListener('pointerdown', (press) => {
    if (press.button !== 0 || field.disabled || document.activeElement === field) return;
    press.preventDefault(); // the caret comes only when it was no drag
    const from = options.get();
    let moved = false;
    followPointer(field, press, (event) => {
      const dx = event.clientX - press.clientX;
      moved ||= Math.abs(dx) >= dragStart;
      if (!moved) return;
      const by = Math.trunc(dx / dragPixels) * options.step * pace(event);
      options.drag(tidy(from + by, options), event);
    }, (event) => {
      if (moved) options.settle(event);
      else if (event.type === 'pointerup') {
        field.focus();
        field.select();
      }
    });
  });
  return field;
}
