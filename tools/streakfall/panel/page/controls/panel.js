// The list of controls in the host's order, with its groups.
import { find, make } from '../core/dom.js';
import { model, stateChanged } from '../core/model.js';
import { showHint } from './hint.js';
import { controlRow } from './row.js';

function groupOf(param) {
  const summary = make('summary', { textContent: param.name.trim() });
  const group = make('details', { open: !param.closed, className: 'group' }, summary);
  summary.addEventListener('focus', () => showHint(param));
  summary.addEventListener('pointerenter', () => showHint(param));
  stateChanged.on(() => group.classList.toggle('off', model.disabled.has(param.index)));
  return group;
}

export function buildPanel() {
  const places = [find('#rows')];
  for (const param of model.params) {
    if (param.kind === 'group end') {
      places.pop();
    } else if (param.kind === 'group start') {
      const group = groupOf(param);
      places.at(-1).append(group);
      places.push(group);
    } else {
      places.at(-1).append(controlRow(param));
    }
  }
}
