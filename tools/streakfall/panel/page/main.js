// Starts the page: what the program offers, the effect's instance, then all parts of the page.
import { beginCommand } from './away/command.js';
import { beginFiles } from './away/files.js';
import { beginMore } from './away/more.js';
import { beginRender } from './away/render.js';
import { watch } from './core/connection.js';
import { find } from './core/dom.js';
import { commit } from './core/history.js';
import { beginLanguage, text } from './core/language.js';
import { model } from './core/model.js';
import { ask } from './core/server.js';
import { begin } from './core/session.js';
import { beginHints } from './controls/hint.js';
import { buildPanel } from './controls/panel.js';
import { beginLooks } from './sheets/looks.js';
import { beginRoll } from './sheets/roll.js';
import { beginSheets } from './sheets/sheet.js';
import { beginBackground } from './stage/background.js';
import { beginHandles } from './stage/handles.js';
import { beginNavigation } from './stage/navigate.js';
import { beginStatus } from './stage/status.js';
import { beginShortcuts } from './shortcuts.js';
import { beginStrip } from './time/strip.js';
import { beginToolbar } from './toolbar.js';
import { beginTransport } from './time/transport.js';

async function start() {
  beginLanguage();
  [model.about, model.params] = await Promise.all([ask('GET', 'about'), ask('GET', 'params')]);
  [model.first, model.last] = model.about.frames;
  model.frame = model.first;

  buildPanel();
  beginNavigation();
  beginBackground();
  beginStatus();
  await begin();
  beginHandles();
  beginTransport();
  beginStrip();
  beginHints();
  beginToolbar();
  for (const part of [beginSheets, beginLooks, beginRoll, beginFiles, beginCommand, beginRender,
    beginMore, beginShortcuts]) {
    part();
  }
  await commit();
  document.body.classList.remove('starting');
  watch();
}

start().catch((error) => {
  find('#notice').textContent = text('noStart', { why: error.message });
  find('#notice').hidden = false;
});
