// A checkbox.
import { make } from '../core/dom.js';

export function switchFields(param, control) {
  const box = make('input', { type: 'checkbox', ariaLabel: param.name });
  box.show = () => {
    box.checked = control.get();
  };
  box.addEventListener('change', (event) => control.set(box.checked, event));
  return [box];
}
