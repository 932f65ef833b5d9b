// The page works without this; with it nothing is loaded as a whole. What the server sends is escaped already.
'use strict';

(() => {
  const searchDelay = 250; // ms
  const stateInterval = 8000;
  const messageTime = 6000;
  const noteTime = 1000; // until a wish has its place
  const find = (id) => document.getElementById(id);
  const search = find('suche');
  const wish = find('wunsch');
  const titles = find('treffer');
  const message = find('meldung');
  let searchTimer = 0;
  let messageTimer = 0;
  let latestSearch = 0;

  const load = async (address, options) => {
    const answer = await fetch(address, { headers: { 'X-Kalvo': '1' }, ...options });
    if (!answer.ok) {
      throw new Error(String(answer.status));
    }
    return answer.text();
  };

  const showOffline = (offline) => document.body.classList.toggle('offline', offline);

  const show = (html) => {
    message.innerHTML = html;
    clearTimeout(messageTimer);
    messageTimer = setTimeout(() => message.replaceChildren(), messageTime);
  };

  const tellFailure = () => {
    const line = document.createElement('p');
    line.className = 'schlecht';
    line.textContent = document.body.dataset.offline;
    show('');
    message.append(line);
    showOffline(true);
  };

  const refreshTitles = async () => {
    const mine = ++latestSearch;
    const text = search.value.trim();
    find('gesucht').value = text;
    const html = await load('/treffer?q=' + encodeURIComponent(text));
    if (mine === latestSearch) {
      titles.innerHTML = html;
    }
  };

  const refreshState = async () => {
    try {
      find('stand').innerHTML = await load('/stand');
      showOffline(false);
    } catch (failure) {
      showOffline(true);
    }
  };

  const searchSoon = () => {
    clearTimeout(searchTimer);
    searchTimer = setTimeout(() => refreshTitles().catch(tellFailure), searchDelay);
  };

  search.addEventListener('input', searchSoon);
  find('sucher').addEventListener('submit', (event) => {
    event.preventDefault();
    clearTimeout(searchTimer);
    search.blur(); // takes the keyboard away
    refreshTitles().catch(tellFailure);
  });

  wish.addEventListener('submit', async (event) => {
    event.preventDefault();
    const button = event.submitter;
    if (!button || button.name !== 'titel') {
      find('name').blur();
      return;
    }
    const form = new URLSearchParams(new FormData(wish));
    form.set('titel', button.value);
    button.disabled = true;
    try {
      show(await load('/wunsch', { method: 'POST', body: form }));
      setTimeout(refreshState, noteTime);
      await Promise.all([refreshTitles(), refreshState()]);
    } catch (failure) {
      tellFailure();
    } finally {
      button.disabled = false;
    }
  });

  setInterval(() => document.hidden || refreshState(), stateInterval);
  document.addEventListener('visibilitychange', () => document.hidden || refreshState());
})();
