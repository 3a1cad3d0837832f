// Keys that work anywhere on the page.
import { find, takesText } from './core/dom.js';
import { redo, undo } from './core/history.js';
import { model } from './core/model.js';
import { closeSheet, isSheetOpen } from './sheets/sheet.js';
import { setFrame } from './time/frame.js';
import { togglePlay } from './time/transport.js';

// A button takes the blank for itself.
const takesBlank = (element) => takesText(element) || element.matches('button, summary, [type=checkbox]');

function withControl(event) {
  const key = event.key.toLowerCase();
  if (key === 'y' || (key === 'z' && event.shiftKey)) redo();
  else if (key === 'z') undo();
  else return false;
  return true;
}

function plain(event) {
  if (event.key === ' ' && !takesBlank(event.target)) togglePlay();
  else if (event.key === 'Escape' && isSheetOpen()) closeSheet();
  else if (takesText(event.target)) return false;
  else if (event.key === ',') setFrame(model.frame - 1);
  else if (event.key === '.') setFrame(model.frame + 1);
  else return false;
  return true;
}

export function beginShortcuts() {
  addEventListener('keydown', (event) => {
    if (event.defaultPrevented || find('dialog[open]') || event.altKey) return;
    const typing = event.target.dataset?.typed !== undefined; // then undo is the field's own
    const done = event.ctrlKey || event.metaKey ? !typing && withControl(event) : plain(event);
    if (done) event.preventDefault();
  });
}
