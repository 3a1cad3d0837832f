// What lies under the lines: the input, a checkerboard or black; and a key held to see the input
// alone.
import { find, takesText } from '../core/dom.js';
import { ids, model, stateChanged, valueById } from '../core/model.js';
import { setBackdrop } from './pictures.js';

const key = 'i';

function show() {
  const chosen = find('#background').value;
  const frame = find('#frame');
  frame.dataset.background = chosen === 'input' ? 'checker' : chosen;
  // Where the effect keeps its input itself, another below would show through twice.
  frame.classList.toggle('over-input', chosen === 'input' && valueById(ids.clearBackground));
}

// The effect gets the same as its layer, so that lines are cut by the input's matte only there.
function choose() {
  if (model.about.input) setBackdrop(find('#background').value);
  show();
}

function hold(on) {
  find('#frame').classList.toggle('input-alone', on);
  find('#hold').ariaPressed = String(on);
}

export function beginBackground() {
  const select = find('#background');
  if (!model.about.input) {
    select.querySelector('[value=input]').remove();
    find('#hold').hidden = true;
  }
  select.addEventListener('change', choose);
  stateChanged.on(show);

  const button = find('#hold');
  button.addEventListener('pointerdown', () => hold(true));
  for (const end of ['pointerup', 'pointerleave', 'blur']) {
    button.addEventListener(end, () => hold(false));
  }
  const isHold = (event) =>
    model.about.input && !takesText(event.target) && !event.ctrlKey && !event.metaKey &&
    (event.key === key || (event.target === button && [' ', 'Enter'].includes(event.key)));
  addEventListener('keydown', (event) => {
    if (!isHold(event) || document.querySelector('dialog[open]')) return;
    event.preventDefault();
    hold(true);
  });
  addEventListener('keyup', (event) => isHold(event) && hold(false));
  addEventListener('blur', () => hold(false));
}
